#pragma once

#include "rig/WindowPlaces.h"

#include <QMap>

/// Remembers the places of windows for as long as it lives.
class TestPlaces : public WindowPlaces {
public:
    std::optional<QPoint> place(const QString& autosavename) const override {
        const auto found = places_.find(autosavename);
        return found == places_.end() ? std::nullopt : std::optional(*found);
    }
    void setPlace(const QString& autosavename, QPoint place) override { places_.insert(autosavename, place); }
    void forgetPlace(const QString& autosavename) override { places_.remove(autosavename); }

private:
    QMap<QString, QPoint> places_;
};
