#include "library/FineChannels.h"

#include <QTest>

Q_DECLARE_METATYPE(QxfChannel)

namespace {

QxfChannel byPreset(const char* name, const char* preset) {
    return {.name = name, .preset = preset};
}

QxfChannel highByte(const char* name) {
    return {.name = name, .preset = {}};
}

QxfChannel lowByte(const char* name) {
    return {.name = name, .preset = {}, .isLowByte = true};
}

} // namespace

class tst_FineChannels : public QObject {
    Q_OBJECT

private slots:
    void aFineChannelIsKnownByItsPresetOrItsName_data();
    void aFineChannelIsKnownByItsPresetOrItsName();
};

void tst_FineChannels::aFineChannelIsKnownByItsPresetOrItsName_data() {
    QTest::addColumn<QxfChannel>("coarse");
    QTest::addColumn<QxfChannel>("fine");
    QTest::addColumn<bool>("belongs");

    QTest::newRow("the same preset") << byPreset("Pan", "PositionPan") << byPreset("uPan", "PositionPanFine")
                                     << true;
    QTest::newRow("a preset of two directions")
        << byPreset("Zoom", "BeamZoomSmallBig") << byPreset("Low", "BeamZoomFine") << true;
    QTest::newRow("another preset") << byPreset("Pan", "PositionPan")
                                    << byPreset("Tilt fine", "PositionTiltFine") << false;
    QTest::newRow("the same preset of another head")
        << byPreset("Pan 1", "PositionPan") << byPreset("Pan fine 2", "PositionPanFine") << false;
    QTest::newRow("the same preset of the same head")
        << byPreset("Pan 1 movement", "PositionPan") << byPreset("Pan fine 1", "PositionPanFine") << true;
    QTest::newRow("a number in one name only")
        << byPreset("Pan 0-540", "PositionPan") << byPreset("Pan fine", "PositionPanFine") << true;
    QTest::newRow("fine in the name") << highByte("Zoom") << lowByte("Zoom Fine") << true;
    QTest::newRow("MSB and LSB") << highByte("Zoom (MSB)") << lowByte("zoom, fine (LSB)") << true;
    QTest::newRow("coarse and fine") << highByte("Coarse zoom") << lowByte("Zoom - fine") << true;
    QTest::newRow("8 and 16 bit") << highByte("Zoom 8bit") << lowByte("Zoom (16-bit)") << true;
    QTest::newRow("bytes in full") << highByte("Zoom") << lowByte("Zoom fine (Least Significant Byte)")
                                   << true;
    QTest::newRow("another number in the name") << highByte("Gobo 1") << lowByte("Gobo 2 fine") << false;
    QTest::newRow("another name") << highByte("Gobo") << lowByte("Gobo index fine") << false;
    QTest::newRow("letters beyond ASCII tell apart") << highByte("\u00c4") << lowByte("\u00d6 fine") << false;
    QTest::newRow("fine in the name alone") << highByte("Zoom") << highByte("Zoom fine") << false;
    QTest::newRow("behind another fine one")
        << byPreset("Pan fine", "PositionPanFine") << lowByte("Pan fine") << false;
    QTest::newRow("behind an unused one") << byPreset("Zoom", "NoFunction") << lowByte("Zoom fine") << false;
}

void tst_FineChannels::aFineChannelIsKnownByItsPresetOrItsName() {
    QFETCH(const QxfChannel, coarse);
    QFETCH(const QxfChannel, fine);
    QFETCH(const bool, belongs);
    QCOMPARE(isFineOf(fine, coarse), belongs);
}

QTEST_APPLESS_MAIN(tst_FineChannels)
#include "tst_FineChannels.moc"
