#pragma once

#include "controls/LevelArray.h"

#include <QString>

#include <cstdint>
#include <memory>
#include <vector>

class DMXControl;
class QWidget;

/// What a control asks of the fixture view that holds it.
class ControlParent {
public:
    virtual ~ControlParent() = default;

    /// The number that stands for "#" in names; a running count while a profile is expanded.
    virtual std::uint32_t layerNum() const = 0;
    virtual void setLayerNum(std::uint32_t layerNum) = 0;
    /// The name with its first "#" replaced by the layer number; a null name stays null.
    virtual QString resolvedName(const QString& name) const = 0;
    /// The first part of a control's registry key: the fixture's name and those of the profiles that are
    /// being expanded, joined with points.
    virtual QString key() const = 0;
    virtual std::uint32_t universe() const = 0;

    /// The widget in which the controls stand, and which draws them.
    virtual QWidget& superview() = 0;
    /// The controls in profile order.
    virtual const std::vector<std::shared_ptr<DMXControl>>& controls() const = 0;
    virtual DMXControl* selectedControl() const = 0;
    virtual void setSelectedControl(DMXControl* control) = 0;
    /// The array in which every control of the view has its element.
    virtual const std::shared_ptr<LevelArray>& levels() const = 0;

protected:
    ControlParent() = default;
    ControlParent(const ControlParent&) = default;
    ControlParent& operator=(const ControlParent&) = default;
};
