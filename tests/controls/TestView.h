#pragma once

#include "controls/ControlParent.h"
#include "controls/DMXControl.h"

#include <QVariantMap>
#include <QWidget>

/// A fixture view as small as controls can live in: a row of 150 by 19 for each.
class TestView : public QWidget, public ControlParent {
    Q_OBJECT

public:
    explicit TestView(QString key = "Spot");
    ~TestView() override;

    /// Adds a control made from a profile's entry.
    DMXControl& add(const QVariantMap& entry);
    DMXControl& addFader(const QString& name) { return add({{"name", name}}); }
    /// Shows the view as the window in front; false when that fails.
    bool bringToFront();

    std::uint32_t layerNum() const override { return layerNum_; }
    void setLayerNum(std::uint32_t layerNum) override { layerNum_ = layerNum; }
    QString resolvedName(const QString& name) const override;
    QString key() const override { return key_; }
    QWidget& superview() override { return *this; }
    std::uint32_t universe() const override { return universe_; }
    void setUniverse(std::uint32_t universe) { universe_ = universe; }
    const std::vector<std::shared_ptr<DMXControl>>& controls() const override { return controls_; }
    DMXControl* selectedControl() const override { return selectedControl_; }
    void setSelectedControl(DMXControl* control) override { selectedControl_ = control; }
    const std::shared_ptr<LevelArray>& levels() const override { return levels_; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString key_;
    std::shared_ptr<LevelArray> levels_ = std::make_shared<LevelArray>();
    std::vector<std::shared_ptr<DMXControl>> controls_;
    DMXControl* selectedControl_ = nullptr;
    std::uint32_t layerNum_ = 0;
    std::uint32_t universe_ = 0;
};
