#pragma once

#include "controls/ControlEditing.h"

#include <map>
#include <memory>
#include <memory_resource>
#include <vector>

class ControlParent;
class QPainter;
class QRegion;
struct ControlDefinition;
struct ControlLook;

/// One fader, bound to one slot (8-bit) or two adjacent slots (16-bit, coarse byte first) of its fixture's
/// universe: a profile's control under a name of its own, which its view selects and which cues and saved
/// levels find in the registry of all controls by key.
class DMXControl : public ControlEditing {
    Q_OBJECT

public:
    using Registry = std::pmr::map<QString, std::shared_ptr<DMXControl>>;

    /// A new control made from a profile's entry and, unless it is a dummy, registered under the parent's
    /// key, a point and its name. A key that is taken is reported on standard output; the newest control
    /// wins. "newlayer" raises the parent's layer number first.
    static std::shared_ptr<DMXControl> controlWithDictionary(const QVariantMap& entry, ControlParent& parent);
    /// Every control that is no dummy, by its key.
    static const Registry& controlsByName();
    /// Sends the control under `key` to a level over a time in seconds, both numbers or strings of digits;
    /// an unknown key is passed over.
    static void setControl(const QString& key, const QVariant& toValue, const QVariant& time);
    /// Registers the control under its key once more: of several it is now the one that is found. A dummy
    /// has none.
    static void registerControl(const std::shared_ptr<DMXControl>& control);
    /// Takes the control out of the registry; false when another one, or none, stands under its key.
    static bool unregisterControl(const DMXControl& control);
    /// Empties the registry; the controls live on with their views.
    static void reset();

    /// A control in its view, which it has to leave before the view's end, see removeFromSuperview().
    DMXControl(const QVariantMap& entry, ControlParent& view);

    /// Takes the control out of its view, which is going away: its entry ends, its level stays.
    void removeFromSuperview();

    QString name() const { return _name; }
    /// The key under which it was registered; null for a dummy.
    const QString& key() const { return key_; }
    void setName(const QString& name) { _name = name; }
    bool hide() const { return _hide; }
    void setHide(bool hide) { _hide = hide; }
    bool header() const { return _header; }
    void setHeader(bool header) { _header = header; }
    /// Universe and 1-based slot, made when it is asked for: a rig has many controls and shows one tip.
    QString toolTip() const;
    /// What there is to draw.
    ControlLook look() const;

    /// Works also while the window is not in front. A control whose view is gone stays as it is.
    void makeFirstResponder() override;
    void selectNextControl(bool backwards) override;

protected:
    bool event(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    bool focusNextPrevChild(bool next) override;

private:
    DMXControl(const ControlDefinition& definition, ControlParent& view);

    void becomeFirstResponder();
    void resignFirstResponder();

    QString _name;
    QString key_;
    bool firstResponder = false;
    bool _hide = false;
    bool _header = false;
};

/// Draws those of a view's controls that are shown and lie in `region`, the part of the view that is due,
/// each on its own piece of the background: right before the rest of it, while that piece is in the cache.
void drawControls(QPainter& painter, const QRegion& region,
                  const std::vector<std::shared_ptr<DMXControl>>& controls);
