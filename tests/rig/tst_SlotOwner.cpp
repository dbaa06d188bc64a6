#include "rig/SlotOwner.h"

#include "rig/DMXControl.h"
#include "support/TestRig.h"

#include <QTest>

#include <memory>

/// Spot on slots 1 to 4 of universe 2 (Dimmer, Pan over two slots, a gap of one), Wash on slot 6, and Late on
/// the universe's last slot and one beyond it.
class tst_SlotOwner : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();

    void aSlotLeadsToItsFixtureAndControl_data();
    void aSlotLeadsToItsFixtureAndControl();
    void ofTwoFixturesOnASlotTheLastOneIsHeard();
    void withoutFixturesNobodyIsHeard();

private:
    std::unique_ptr<TestRig> rig_;
};

void tst_SlotOwner::initTestCase() {
    rig_ = std::make_unique<TestRig>();
    rig_->add(placement("Spot", 2, 1,
                        {controlEntry("Dimmer"), QVariantMap{{"name", "Pan"}, {"channels", 2}},
                         QVariantMap{{"blank", 1}}, QVariantMap{{"label", "Text"}}}));
    rig_->add("Wash", {"Red"}, 2, 6);
    rig_->add(placement("Late", 2, 512, {QVariantMap{{"name", "Tilt"}, {"channels", 2}}}));
}

void tst_SlotOwner::cleanupTestCase() {
    rig_.reset();
}

void tst_SlotOwner::aSlotLeadsToItsFixtureAndControl_data() {
    QTest::addColumn<int>("universe");
    QTest::addColumn<int>("slot");
    QTest::addColumn<QString>("owner");

    QTest::newRow("one slot") << 2 << 1 << "Spot Dimmer";
    QTest::newRow("the first of two") << 2 << 2 << "Spot Pan";
    QTest::newRow("the second of two") << 2 << 3 << "Spot Pan";
    QTest::newRow("a gap") << 2 << 4 << "";
    QTest::newRow("behind a fixture") << 2 << 5 << "";
    QTest::newRow("another fixture") << 2 << 6 << "Wash Red";
    QTest::newRow("a control that reaches beyond the universe is not sent") << 2 << 512 << "";
    QTest::newRow("another universe") << 3 << 1 << "";
}

void tst_SlotOwner::aSlotLeadsToItsFixtureAndControl() {
    QFETCH(const int, universe);
    QFETCH(const int, slot);
    QFETCH(const QString, owner);
    const SlotOwner found = ownerOfSlot(rig_->fixtures(), universe, static_cast<std::size_t>(slot - 1));
    QCOMPARE(found.control ? found.fixture->name() + " " + found.control->name() : QString(), owner);
}

void tst_SlotOwner::ofTwoFixturesOnASlotTheLastOneIsHeard() {
    rig_->add("Over", {"Green"}, 2, 6);
    QCOMPARE(ownerOfSlot(rig_->fixtures(), 2, 5).fixture->name(), QString("Over"));
}

// Last of all.
void tst_SlotOwner::withoutFixturesNobodyIsHeard() {
    rig_->fixtures().replaceAll({});
    QCOMPARE(ownerOfSlot(rig_->fixtures(), 2, 0).control, nullptr);
    QCOMPARE(ownerOfSlot(rig_->fixtures(), 2, 0).fixture, nullptr);
}

QTEST_APPLESS_MAIN(tst_SlotOwner)
#include "tst_SlotOwner.moc"
