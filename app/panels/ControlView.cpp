#include "panels/ControlView.h"

#include "levels/LevelMovement.h"
#include "panels/AccessibleView.h"
#include "panels/Colours.h"
#include "panels/ControlDrawing.h"
#include "panels/ControlKeys.h"
#include "panels/EditView.h"
#include "rig/Fixture.h"

#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>
#include <QWheelEvent>
#include <QWindow>

#include <utility>

namespace {

// Another window, a popup or a menu borrows the keys; the selection stays where it is.
bool onlyBorrowsFocus(Qt::FocusReason reason) {
    return reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason ||
           reason == Qt::MenuBarFocusReason;
}

QRegion coveredBy(const Fixture& fixture) {
    QRegion covered;
    for (const auto& control : fixture.controls()) {
        covered += control->hide() ? QRect() : fixture.frameOf(*control);
    }
    return covered;
}

} // namespace

ControlView::ControlView(Fixture& fixture, EditView& editView)
    : fixture_(fixture), editView_(editView), covered_(coveredBy(fixture)) {
    resize(fixture.size());
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::TabFocus); // a click beside a fader does not take the keys
    fixture_.addObserver(*this);
}

ControlView::~ControlView() {
    editView_.leave(*this);
    fixture_.removeObserver(*this);
}

// --- Selection -----------------------------------------------------------------------------------------

DMXControl* ControlView::listener() const {
    DMXControl* const selected = ownSelection();
    return selected && selected->firstResponder() ? selected : nullptr;
}

// A selection that was saved may be another fixture's fader, where several share a key.
DMXControl* ControlView::ownSelection() const {
    DMXControl* const selected = fixture_.selectedControl();
    return selected && &selected->fixture() == &fixture_ ? selected : nullptr;
}

void ControlView::select(DMXControl& control) {
    setFocus(Qt::OtherFocusReason);
    if (listener() != &control) {
        control.becomeFirstResponder();
    }
}

void ControlView::giveKeys(DMXControl& control) {
    window()->raise();
    window()->activateWindow();
    select(control);
}

void ControlView::focusInEvent(QFocusEvent*) {
    if (DMXControl* const listening = listener()) {
        entryChanged(*listening); // the one field may have been shown elsewhere in the meantime
        announceListenerSoon();
    } else if (DMXControl* const selected = ownSelection()) {
        selected->becomeFirstResponder();
    }
}

void ControlView::focusOutEvent(QFocusEvent* event) {
    announcedListener_ = nullptr;
    DMXControl* const listening = listener();
    if (listening && !onlyBorrowsFocus(event->reason())) {
        listening->resignFirstResponder();
    }
}

// Tab is a key like the others here.
bool ControlView::focusNextPrevChild(bool) {
    return false;
}

void ControlView::selectNextControl(DMXControl& control, bool backwards) {
    control.endEdit();
    control.endEntry();
    select(fixture_.neighbourOf(control, backwards));
}

// While no fader is selected, the keys that move the selection make one.
bool ControlView::selectFirst(const QKeyEvent& event) {
    const int key = event.key();
    const bool first = key == Qt::Key_Tab || key == Qt::Key_Backtab || key == Qt::Key_Down;
    const bool commanded = event.modifiers() & Qt::ControlModifier;
    if (commanded || !(first || key == Qt::Key_Up)) {
        return false;
    }
    DMXControl* const control = fixture_.endControl(!first);
    if (control) {
        select(*control);
    }
    return control;
}

// --- Keys ----------------------------------------------------------------------------------------------

void ControlView::keyPressEvent(QKeyEvent* event) {
    if (!listener()) {
        event->setAccepted(selectFirst(*event));
    } else if (meaningOf(*event).action != KeyAction::None) {
        keyDown(*event);
    } else {
        event->ignore();
    }
}

void ControlView::keyDown(const QKeyEvent& event) {
    DMXControl& control = *listener();
    const KeyMeaning meaning = meaningOf(event);
    if (meaning.action == KeyAction::SelectNext || meaning.action == KeyAction::SelectPrevious) {
        selectNextControl(control, meaning.action == KeyAction::SelectPrevious);
    } else {
        ::keyDown(control, meaning);
    }
}

void ControlView::copy() const {
    if (const DMXControl* const control = listener()) {
        ::copy(*control);
    }
}

void ControlView::paste() const {
    if (DMXControl* const control = listener()) {
        ::paste(*control);
    }
}

// --- Mouse and wheel -----------------------------------------------------------------------------------

void ControlView::mousePressEvent(QMouseEvent* event) {
    DMXControl* const control = fixture_.controlAt(event->position().toPoint());
    if (!control || control->dummy() || drag_.isUnderWay()) {
        event->ignore();
        return;
    }
    select(*control);
    if (event->button() == Qt::LeftButton) {
        drag_ = ControlDrag(*control, fixture_.frameOf(*control).width(), event->scenePosition());
    }
}

void ControlView::mouseMoveEvent(QMouseEvent* event) {
    drag_.moveTo(event->scenePosition());
}

void ControlView::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        drag_ = {};
    }
}

void ControlView::wheelEvent(QWheelEvent* event) {
    constexpr double unitsPerNotch = 120.0;
    DMXControl* const control = fixture_.controlAt(event->position().toPoint());
    if (control && !control->dummy()) {
        scrollWheel(*control, event->angleDelta().y() / unitsPerNotch,
                    event->modifiers() & Qt::ControlModifier);
    } else {
        event->ignore();
    }
}

void ControlView::scrollWheel(DMXControl& control, double delta, bool command) {
    select(control);
    control.step(wheelStep(delta, command));
}

// --- Drawing -------------------------------------------------------------------------------------------

// A window on another desktop counts as visible. What moves there meanwhile is drawn once it has come back.
bool ControlView::seesLevels() const {
    const QWindow* const handle = window()->windowHandle();
    return isVisible() && handle && handle->isExposed();
}

void ControlView::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (QWindow* const handle = window()->windowHandle()) {
        handle->installEventFilter(this);
    }
}

bool ControlView::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Expose && seesLevels() && std::exchange(hasMissedLevels_, false)) {
        update();
    }
    return QWidget::eventFilter(watched, event);
}

void ControlView::controlChanged(DMXControl& control) {
    if (!seesLevels()) {
        hasMissedLevels_ = true;
    } else if (!control.hide()) {
        update(fixture_.frameOf(control));
    }
    if (&control == listener() && hasFocus()) {
        announceListenerSoon();
        announceLevel(*this, control);
    }
}

// The view has the focus for the toolkit; for a screen reader the fader has it that listens. The toolkit
// announces the view after it gave it the focus, and what is announced last counts.
void ControlView::announceListenerSoon() {
    if (listener() != announcedListener_) {
        QMetaObject::invokeMethod(this, &ControlView::announceListener, Qt::QueuedConnection);
    }
}

void ControlView::announceListener() {
    DMXControl* const listening = hasFocus() ? listener() : nullptr;
    if (listening != std::exchange(announcedListener_, listening) && listening) {
        announceFocus(*this, *listening);
    }
}

void ControlView::entryChanged(DMXControl& control) {
    constexpr int fromRight = 50;
    constexpr int above = 13;
    constexpr QSize size(45, 18);
    if (control.dummy()) {
        return;
    }
    if (control.entry().empty()) {
        editView_.hide(control);
        return;
    }
    const QRect frame = fixture_.frameOf(control);
    const std::string_view typed = control.entry().text();
    editView_.show(control, *this,
                   QRect(QPoint(frame.x() + frame.width() - fromRight, frame.y() - above), size),
                   QString::fromLatin1(typed.data(), static_cast<qsizetype>(typed.size())));
}

ControlLook ControlView::look(const DMXControl& control) const {
    return {.name = control.name(),
            .value = control.value(),
            .max = control.max(),
            .channels = control.channels(),
            .timed = control.time() != 0,
            .dummy = control.dummy(),
            .outlined = &control == listener() && isActiveWindow()};
}

void ControlView::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    for (const QRect& bare : event->region() - covered_) {
        painter.fillRect(bare, gBackgroundColour);
    }
    for (const auto& control : fixture_.controls()) {
        if (!control->hide() && event->region().intersects(fixture_.frameOf(*control))) {
            drawControl(painter, *control);
        }
    }
}

// Right after its own piece of the background, while that is in the cache.
void ControlView::drawControl(QPainter& painter, const DMXControl& control) const {
    const QRect frame = fixture_.frameOf(control);
    painter.fillRect(frame, gBackgroundColour);
    ::drawControl(painter, frame, look(control));
}

// --- Tips and the window in front ----------------------------------------------------------------------

bool ControlView::event(QEvent* event) {
    switch (event->type()) {
    case QEvent::ToolTip: {
        const auto& help = static_cast<const QHelpEvent&>(*event);
        showToolTip(help.pos(), help.globalPos());
        return true;
    }
    case QEvent::WindowActivate:
    case QEvent::WindowDeactivate:
        if (DMXControl* const listening = listener()) {
            update(fixture_.frameOf(*listening));
        }
        break;
    default:
        break;
    }
    return QWidget::event(event);
}

void ControlView::showToolTip(QPoint place, QPoint globalPlace) {
    if (const DMXControl* const control = fixture_.controlAt(place)) {
        QToolTip::showText(globalPlace, control->toolTip(), this, fixture_.frameOf(*control));
    } else {
        QToolTip::hideText();
    }
}
