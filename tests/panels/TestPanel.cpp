#include "TestPanel.h"

#include <QTest>

#include <algorithm>
#include <utility>

QVariantMap labelEntry(const QString& text) {
    return {{"label", text}};
}

QVariantMap wideEntry(const QString& name, int restLevel) {
    QVariantMap entry = controlEntry(name, restLevel);
    entry["channels"] = qlonglong{2};
    return entry;
}

TestPanel::TestPanel(const QVariantList& entries, const QString& name, int universe, int address)
    : TestPanel(std::make_shared<TestRig>(), std::make_shared<EditView>(),
                placement(name, universe, address, entries)) {}

TestPanel::TestPanel(const TestPanel& other, const QVariantList& entries, const QString& name)
    : TestPanel(other.rig_, other.editView_, placement(name, 0, 1, entries)) {}

TestPanel::TestPanel(std::shared_ptr<TestRig> rig, std::shared_ptr<EditView> editView,
                     const QVariantMap& placement)
    : rig_(std::move(rig)), editView_(std::move(editView)), fixture_(rig_->add(placement)),
      view_(std::make_unique<ControlView>(fixture_, *editView_)) {
    view_->setFocus();
}

// As in the program: whoever shows a fixture goes before it.
TestPanel::~TestPanel() {
    view_.reset();
    rig_->fixtures().remove(rig_->fixtures().rowOf(fixture_), 1);
}

DMXControl& TestPanel::fader(const QString& name) const {
    const auto found = std::ranges::find_if(fixture_.controls(),
                                            [&](const auto& control) { return control->name() == name; });
    if (found == fixture_.controls().end()) {
        qFatal("no fader '%s'", qUtf8Printable(name));
    }
    return **found;
}

std::unique_ptr<PaintCount> TestPanel::paintsOf(const DMXControl& control) {
    return std::make_unique<PaintCount>(*view_, fixture_.frameOf(control));
}

bool TestPanel::hasKeys(const DMXControl& control) const {
    return view_->hasFocus() && view_->listener() == &control;
}

bool TestPanel::bringToFront() {
    view_->show();
    view_->activateWindow();
    return QTest::qWaitForWindowActive(view_.get());
}
