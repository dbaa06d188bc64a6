#pragma once

#include <QLatin1StringView>
#include <QPoint>
#include <QString>

#include <cstddef>
#include <optional>

/// What every autosave name begins with.
inline constexpr QLatin1StringView autosavenamePrefix("faderhall_");

/// Under which name the place of the window of the fixture in that row is remembered.
QString autosavenameOfRow(std::size_t row);

/// Where the places of windows are remembered from run to run, each under its window's autosave name.
class WindowPlaces {
public:
    virtual ~WindowPlaces() = default;

    /// The place of the window's top left corner, frame included; nothing when none is remembered.
    virtual std::optional<QPoint> place(const QString& autosavename) const = 0;
    virtual void setPlace(const QString& autosavename, QPoint place) = 0;
    virtual void forgetPlace(const QString& autosavename) = 0;

protected:
    WindowPlaces() = default;
    WindowPlaces(const WindowPlaces&) = default;
    WindowPlaces& operator=(const WindowPlaces&) = default;
};

/// Exchanges the places of two neighbouring blocks of rows: first..middle-1 go behind middle..last-1. Each
/// window keeps its place in its new row.
void rotatePlaces(WindowPlaces& places, std::size_t first, std::size_t middle, std::size_t last);
