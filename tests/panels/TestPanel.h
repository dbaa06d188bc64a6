#pragma once

#include "panels/ControlView.h"
#include "panels/EditView.h"
#include "support/PaintCount.h"
#include "support/TestRig.h"

#include <QVariantList>

#include <memory>

/// A label of a profile.
QVariantMap labelEntry(const QString& text);
/// A control entry of a profile, 16-bit, at rest at `restLevel`.
QVariantMap wideEntry(const QString& name, int restLevel = 0);

/// One fixture and a view of it that is a window of its own.
class TestPanel {
public:
    /// A fixture made from these entries of a profile, in a rig of its own.
    explicit TestPanel(const QVariantList& entries, const QString& name = "Spot", int universe = 0,
                       int address = 1);
    /// A fixture in the rig of another one; the two have one entry field.
    TestPanel(const TestPanel& other, const QVariantList& entries, const QString& name);
    ~TestPanel();
    TestPanel(const TestPanel&) = delete;
    TestPanel& operator=(const TestPanel&) = delete;
    TestPanel(TestPanel&&) = delete;
    TestPanel& operator=(TestPanel&&) = delete;

    TestRig& rig() { return *rig_; }
    EditView& editView() { return *editView_; }
    Fixture& fixture() { return fixture_; }
    ControlView& view() { return *view_; }

    /// By its place in the profile, labels and blanks counted.
    DMXControl& fader(std::size_t index) const { return *fixture_.controls().at(index); }
    DMXControl& fader(const QString& name) const;
    /// The middle of a fader in the view.
    QPoint middleOf(const DMXControl& control) const { return fixture_.frameOf(control).center(); }
    std::unique_ptr<PaintCount> paintsOf(const DMXControl& control);
    /// True while the keys of this window go to that fader.
    bool hasKeys(const DMXControl& control) const;

    /// Shows the view as the window in front; false when that fails.
    bool bringToFront();
    /// Takes the view away and leaves the fixture.
    void closeView() { view_.reset(); }

private:
    TestPanel(std::shared_ptr<TestRig> rig, std::shared_ptr<EditView> editView, const QVariantMap& placement);

    std::shared_ptr<TestRig> rig_;
    std::shared_ptr<EditView> editView_;
    Fixture& fixture_;
    std::unique_ptr<ControlView> view_;
};
