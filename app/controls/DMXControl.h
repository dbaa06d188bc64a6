#pragma once

#include "controls/ControlDrawing.h"
#include "controls/LevelState.h"
#include "controls/NumericEntry.h"

#include <QPointF>
#include <QWidget>

#include <cstdint>
#include <map>
#include <memory>

class ControlParent;
struct ControlDefinition;

/// One fader: the widget over one element of its fixture view's level array, bound to one slot (8-bit) or
/// two adjacent slots (16-bit, coarse byte first). Drawing, key meanings, fades and encoding are functions
/// and values of their own; this class joins them and keeps the registry of all controls by key.
class DMXControl : public QWidget {
    Q_OBJECT

public:
    using Registry = std::map<QString, std::shared_ptr<DMXControl>>;

    /// A new control made from a profile's entry and, unless it is a dummy, registered under the parent's
    /// key, a point and its name. A key that is taken is reported on standard output; the newest control
    /// wins. "newlayer" raises the parent's layer number first.
    static std::shared_ptr<DMXControl> controlWithDictionary(const QVariantMap& entry, ControlParent& parent);
    /// Every control that is no dummy, by its key.
    static const Registry& controlsByName();
    /// Sends the control under `key` to a level over a time in seconds, both numbers or strings of digits;
    /// an unknown key is passed over.
    static void setControl(const QString& key, const QVariant& toValue, const QVariant& time);
    /// Empties the registry; the controls live on with their views.
    static void reset();

    DMXControl(const QVariantMap& entry, ControlParent& view);
    ~DMXControl() override;

    /// Takes the control out of its view, which is going away: its entry ends, its level stays.
    void removeFromSuperview();

    /// Writes the level into the universe's slots and advances a running fade; true when a slot changed.
    bool updateDMX(Slots universe);
    /// Goes to `value` over `time` seconds, which becomes the control's fade time.
    void setDMXValue(std::uint32_t value, float time);
    /// Goes to the profile's default at once; the fade time becomes 0.
    void setDefault();
    bool notDefault() const { return value() != defaultValue; }

    QString name() const { return _name; }
    void setName(const QString& name) { _name = name; }
    std::uint32_t channels() const { return state().channels; }
    void setChannels(std::uint32_t channels) { state().channels = channels; }
    std::uint32_t value() const { return state().value; }
    void setValue(std::uint32_t value) { state().value = value; }
    float time() const { return state().time; }
    void setTime(float time) { state().time = time; }
    std::uint32_t max() const { return state().max; }
    void setMax(std::uint32_t max) { state().max = max; }
    bool hide() const { return _hide; }
    void setHide(bool hide) { _hide = hide; }
    bool dummy() const { return state().dummy; }
    void setDummy(bool dummy) { state().dummy = dummy; }
    bool header() const { return _header; }
    void setHeader(bool header) { _header = header; }
    /// 0-based slot; setting it names universe and 1-based slot in the tooltip.
    std::uint32_t address() const { return state().address; }
    void setAddress(std::uint32_t address);
    const Fade& fade() const { return state().fade; }

    /// Makes this control the one that its window's keys go to, also while the window is not in front. A
    /// control whose view is gone stays as it is.
    void makeFirstResponder();
    /// Asks the control to be drawn again if a fade moved its level since it was last asked.
    void redrawIfFaded();

    void keyDown(const QKeyEvent& event);
    void selectNextControl(bool backwards);
    /// Applies the number being typed; true when a new level was asked for.
    bool endEdit();
    /// Shows, updates or takes away the entry field, as the number being typed wants it.
    void changedEditState();
    /// Places are in window coordinates.
    void mouseDown(QPointF place);
    void mouseDragged(QPointF place);
    void mouseUp();
    /// `delta` is in notches of a plain wheel; finer ones count tenfold, and 200 times with Command.
    void scrollWheel(double delta, bool command);

public slots:
    /// The pasteboard takes the level as a keyed archive under text/plain; other programs read nothing in it.
    void copy() const;
    /// Takes the level from the pasteboard at once; anything that is no such archive changes nothing.
    void paste();

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    DMXControl(const ControlDefinition& definition, ControlParent& view);

    LevelState& state() { return (*levels)[levelIndex]; }
    const LevelState& state() const { return (*levels)[levelIndex]; }
    ControlLook look() const;
    void becomeFirstResponder();
    void resignFirstResponder();
    void endEntry();
    void moveTo(std::uint32_t level);

    std::shared_ptr<LevelArray> levels; ///< kept alive by every control in it
    std::size_t levelIndex = 0;
    ControlParent* parent = nullptr; ///< null once the view is gone
    QString _name;
    NumericEntry numericEntry;
    std::uint32_t defaultValue = 0;
    std::uint32_t startValue = 0; ///< the level when the drag began
    QPointF startPt;
    bool tracking = false;
    bool dragging = false;
    bool firstResponder = false;
    bool _hide = false;
    bool _header = false;
};
