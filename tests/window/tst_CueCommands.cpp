#include "window/CueCommands.h"

#include "cues/CueStepper.h"
#include "cues/CueStore.h"
#include "settings/Settings.h"
#include "support/TestRig.h"
#include "window/ModifierKeys.h"

#include <QTest>

#include <algorithm>
#include <memory>
#include <optional>

namespace {

using Number = std::optional<QString>;

bool gOptionHeld = false;

} // namespace

/// One fixture with a fader; cue 1 takes it to 10, cue 2 to 200.
class tst_CueCommands : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void theCuesAreListedInTheirOrder();
    void everyItemDoesWhatItSays_data();
    void everyItemDoesWhatItSays();
    void withOptionHeldACueIsOnlySelected_data();
    void withOptionHeldACueIsOnlySelected();
    void optionIsReadWhenTheItemIsChosen();
    void storingRecordsIntoTheCurrentCue();
    void clearTimingTakesTheTimes();
    void deletingTakesTheItem();
    void deletingWithoutACurrentCueLeavesTheList();
    void aNewCueIsListedMarkedAndNamedAndExecutesNothing();
    void compactCuesAreExecutedAsTheyWere();

private:
    void choose(const QString& item);
    /// The menu's title and then its cues, the current one with a star.
    QStringList shown() const;
    QVariantMap cues() const { return settings_.cues(); }

    std::unique_ptr<TestRig> rig_;
    Settings settings_;
    std::unique_ptr<CueStore> store_;
    std::unique_ptr<CueStepper> stepper_;
    std::unique_ptr<CueMenu> menu_;
    std::unique_ptr<CueCommands> commands_;
    DMXControl* spot_ = nullptr;
};

void tst_CueCommands::init() {
    gOptionHeld = false;
    setModifierKeys([] { return Qt::KeyboardModifiers(gOptionHeld ? Qt::AltModifier : Qt::NoModifier); });
    rig_ = std::make_unique<TestRig>();
    rig_->add("Spot", {"Dimmer"});
    spot_ = &rig_->control("Spot.Dimmer");
    const auto cueTo = [](qlonglong level) {
        return QVariantList{QVariantMap{{"key", "Spot.Dimmer"}, {"value", level}, {"time", 0.0}}};
    };
    settings_ = Settings(QVariantMap{{"cues", QVariantMap{{"2", cueTo(200)}, {"1", cueTo(10)}}}});
    store_ = std::make_unique<CueStore>(settings_, rig_->faders());
    stepper_ = std::make_unique<CueStepper>(*store_, rig_->faders());
    menu_ = std::make_unique<CueMenu>();
    commands_ = std::make_unique<CueCommands>(*store_, *stepper_, *menu_);
    commands_->setupCueMenu();
}

void tst_CueCommands::cleanup() {
    commands_.reset();
    menu_.reset();
    stepper_.reset();
    store_.reset();
    rig_.reset();
    setModifierKeys(nullptr);
}

void tst_CueCommands::choose(const QString& item) {
    const QList<QAction*> items = menu_->actions();
    const auto found = std::ranges::find(items, item, &QAction::text);
    QVERIFY2(found != items.end(), qPrintable(item));
    (*found)->trigger();
}

QStringList tst_CueCommands::shown() const {
    QStringList texts{menu_->title()};
    bool isCue = false;
    for (const QAction* item : menu_->actions()) {
        if (isCue) {
            texts.append(item->isChecked() ? item->text() + " *" : item->text());
        }
        isCue = isCue || item == menu_->actions().at(8); // the line below the commands
    }
    return texts;
}

void tst_CueCommands::theCuesAreListedInTheirOrder() {
    QCOMPARE(shown(), (QStringList{"Cues", "1", "2"}));
}

void tst_CueCommands::everyItemDoesWhatItSays_data() {
    QTest::addColumn<Number>("before");
    QTest::addColumn<QString>("item");
    QTest::addColumn<unsigned>("level");
    QTest::addColumn<QStringList>("menu");

    QTest::newRow("a cue") << Number("1") << "2" << 200U << QStringList{"Cue: 2", "1", "2 *"};
    QTest::newRow("the first") << Number() << "Next Cue" << 10U << QStringList{"Cue: 1", "1 *", "2"};
    QTest::newRow("the next") << Number("1") << "Next Cue" << 200U << QStringList{"Cue: 2", "1", "2 *"};
    QTest::newRow("the last") << Number() << "Prev Cue" << 200U << QStringList{"Cue: 2", "1", "2 *"};
    QTest::newRow("the one before") << Number("2") << "Prev Cue" << 10U << QStringList{"Cue: 1", "1 *", "2"};
    QTest::newRow("clear") << Number("1") << "Clear" << 0U << QStringList{"Cues", "1", "2"};
}

void tst_CueCommands::everyItemDoesWhatItSays() {
    QFETCH(const Number, before);
    QFETCH(const QString, item);
    QFETCH(const unsigned, level);
    QFETCH(const QStringList, menu);

    stepper_->setCurrCue(before);
    spot_->setDMXValue(77, 0);
    choose(item);
    QCOMPARE(spot_->value(), level);
    QCOMPARE(shown(), menu);
}

void tst_CueCommands::withOptionHeldACueIsOnlySelected_data() {
    QTest::addColumn<Number>("before");
    QTest::addColumn<QString>("item");
    QTest::addColumn<QStringList>("menu");

    QTest::newRow("a cue") << Number("1") << "2" << QStringList{"Cue: 2", "1", "2 *"};
    QTest::newRow("the current cue") << Number("2") << "2" << QStringList{"Cue: 2", "1", "2 *"};
    QTest::newRow("the first") << Number() << "Next Cue" << QStringList{"Cue: 1", "1 *", "2"};
    QTest::newRow("the next") << Number("1") << "Next Cue" << QStringList{"Cue: 2", "1", "2 *"};
    QTest::newRow("the last") << Number() << "Prev Cue" << QStringList{"Cue: 2", "1", "2 *"};
    QTest::newRow("the one before") << Number("2") << "Prev Cue" << QStringList{"Cue: 1", "1 *", "2"};
}

void tst_CueCommands::withOptionHeldACueIsOnlySelected() {
    QFETCH(const Number, before);
    QFETCH(const QString, item);
    QFETCH(const QStringList, menu);

    stepper_->setCurrCue(before);
    spot_->setDMXValue(77, 0);
    spot_->setTime(4);
    gOptionHeld = true;
    choose(item);
    QCOMPARE(spot_->value(), 77U);
    QCOMPARE(spot_->time(), 4.0F);
    QCOMPARE(shown(), menu);
}

void tst_CueCommands::optionIsReadWhenTheItemIsChosen() {
    gOptionHeld = true;
    choose("2");
    QCOMPARE(spot_->value(), 0U);
    gOptionHeld = false;
    choose("2");
    QCOMPARE(spot_->value(), 200U);
    gOptionHeld = true;
    choose("Clear"); // not a matter of choosing a cue
    QCOMPARE(spot_->value(), 0U);
}

void tst_CueCommands::storingRecordsIntoTheCurrentCue() {
    stepper_->setCurrCue("2");
    spot_->setDMXValue(77, 0);
    choose("Store Cue");
    QCOMPARE(shown(), (QStringList{"Cue: 2", "1", "2 *"}));
    choose("1");
    choose("2");
    QCOMPARE(spot_->value(), 77U);
}

void tst_CueCommands::clearTimingTakesTheTimes() {
    stepper_->setCurrCue("2");
    spot_->setTime(3);
    choose("Clear Timing");
    QCOMPARE(spot_->time(), 0.0F);
    QCOMPARE(shown(), (QStringList{"Cues", "1", "2"}));
}

void tst_CueCommands::deletingTakesTheItem() {
    stepper_->setCurrCue("1");
    choose("Delete Cue");
    QCOMPARE(shown(), (QStringList{"Cues", "2"}));
    QCOMPARE(cues().keys(), QStringList{"2"});
}

void tst_CueCommands::deletingWithoutACurrentCueLeavesTheList() {
    choose("Delete Cue");
    QCOMPARE(shown(), (QStringList{"Cues", "1", "2"}));
    QCOMPARE(cues().size(), 2);
}

void tst_CueCommands::aNewCueIsListedMarkedAndNamedAndExecutesNothing() {
    spot_->setDMXValue(77, 0);
    store_->create("1.5");
    stepper_->setCurrCue("1.5");
    commands_->setupCueMenu();
    QCOMPARE(shown(), (QStringList{"Cue: 1.5", "1", "1.5 *", "2"}));
    QCOMPARE(stepper_->currCue(), Number("1.5"));
    QCOMPARE(spot_->value(), 77U);
}

void tst_CueCommands::compactCuesAreExecutedAsTheyWere() {
    const QVariantList before = cues().value("2").toList();
    store_->compact();
    QVERIFY(cues().value("2").metaType() != QMetaType::fromType<QVariantList>());
    QCOMPARE(cues().value("2").toList(), before);
    choose("2");
    QCOMPARE(spot_->value(), 200U);
}

QTEST_MAIN(tst_CueCommands)

#include "tst_CueCommands.moc"
