#include "rig/Attributes.h"

#include <QTest>

class tst_Attributes : public QObject {
    Q_OBJECT

private slots:
    void aPlainNameImpliesAnAttribute_data();
    void aPlainNameImpliesAnAttribute();
    void caseBlanksAndNumbersMakeNoDifference_data();
    void caseBlanksAndNumbersMakeNoDifference();
    void wheelsAreToldApartByTheirNumbers_data();
    void wheelsAreToldApartByTheirNumbers();
    void otherNamesImplyNothing_data();
    void otherNamesImplyNothing();
};

void tst_Attributes::aPlainNameImpliesAnAttribute_data() {
    QTest::addColumn<QString>("attribute");

    QTest::newRow("Dimmer") << "Dimmer";
    QTest::newRow("Intensity") << "Dimmer";
    QTest::newRow("Master") << "Dimmer";
    QTest::newRow("Master Dimmer") << "Dimmer";
    QTest::newRow("Level") << "Dimmer";
    QTest::newRow("Red") << "ColorAdd_R";
    QTest::newRow("Green") << "ColorAdd_G";
    QTest::newRow("Blue") << "ColorAdd_B";
    QTest::newRow("White") << "ColorAdd_W";
    QTest::newRow("Amber") << "ColorAdd_RY";
    QTest::newRow("Lime") << "ColorAdd_GY";
    QTest::newRow("UV") << "ColorAdd_UV";
    QTest::newRow("Cyan") << "ColorSub_C";
    QTest::newRow("Magenta") << "ColorSub_M";
    QTest::newRow("Yellow") << "ColorSub_Y";
    QTest::newRow("Pan") << "Pan";
    QTest::newRow("Tilt") << "Tilt";
    QTest::newRow("Gobo") << "Gobo1";
    QTest::newRow("Prism") << "Prism1";
    QTest::newRow("Shutter") << "Shutter1";
    QTest::newRow("Strobe") << "Shutter1";
    QTest::newRow("Zoom") << "Zoom";
    QTest::newRow("Focus") << "Focus1";
    QTest::newRow("Iris") << "Iris";
    QTest::newRow("Frost") << "Frost1";
    QTest::newRow("Fog") << "Fog1";
    QTest::newRow("Haze") << "Haze1";
    QTest::newRow("Fan") << "Fan1";
}

void tst_Attributes::aPlainNameImpliesAnAttribute() {
    QFETCH(const QString, attribute);
    QCOMPARE(attributeOfName(QTest::currentDataTag()), attribute);
}

void tst_Attributes::caseBlanksAndNumbersMakeNoDifference_data() {
    QTest::addColumn<QString>("attribute");

    QTest::newRow("RED") << "ColorAdd_R";
    QTest::newRow("uv") << "ColorAdd_UV";
    QTest::newRow("  master \t dimmer ") << "Dimmer";
    QTest::newRow("Dimmer 1") << "Dimmer";
    QTest::newRow("Red 0") << "ColorAdd_R";
    QTest::newRow("Red 3") << "ColorAdd_R";
    QTest::newRow("Red3") << "ColorAdd_R";
    QTest::newRow("Red 007") << "ColorAdd_R";
    QTest::newRow("Red 12345678901234567890") << "ColorAdd_R";
    QTest::newRow("Red #") << "ColorAdd_R";
    QTest::newRow("Red#") << "ColorAdd_R";
    QTest::newRow("Shutter 2") << "Shutter1";
}

void tst_Attributes::caseBlanksAndNumbersMakeNoDifference() {
    QFETCH(const QString, attribute);
    QCOMPARE(attributeOfName(QTest::currentDataTag()), attribute);
}

void tst_Attributes::wheelsAreToldApartByTheirNumbers_data() {
    QTest::addColumn<QString>("attribute");

    QTest::newRow("Gobo 0") << "Gobo1";
    QTest::newRow("Gobo 1") << "Gobo1";
    QTest::newRow("Gobo 2") << "Gobo2";
    QTest::newRow("gobo9") << "Gobo9";
    QTest::newRow("Gobo 10") << "Gobo1";
    QTest::newRow("Gobo 02") << "Gobo1";
    QTest::newRow("Gobo #") << "Gobo1";
    QTest::newRow("Prism 2") << "Prism2";
}

void tst_Attributes::wheelsAreToldApartByTheirNumbers() {
    QFETCH(const QString, attribute);
    QCOMPARE(attributeOfName(QTest::currentDataTag()), attribute);
}

void tst_Attributes::otherNamesImplyNothing_data() {
    QTest::addColumn<QString>("name");

    QTest::newRow("none") << QString();
    QTest::newRow("an empty one") << "";
    QTest::newRow("a blank") << " ";
    QTest::newRow("a number") << "12";
    QTest::newRow("a layer number") << "#";
    QTest::newRow("the low byte") << "Red fine";
    QTest::newRow("the low byte, numbered") << "Pan Fine 2";
    QTest::newRow("the number in front") << "1 Red";
    QTest::newRow("a number between") << "Red 1 Blue";
    QTest::newRow("two numbers") << "Red 1 2";
    QTest::newRow("a further word") << "Pan Speed";
    QTest::newRow("a longer word") << "Redder";
    QTest::newRow("an attribute's own name") << "ColorAdd_R";
    QTest::newRow("digits of another script") << QString::fromUtf8("Red \u0663");
    QTest::newRow("no blank in two words") << "MasterDimmer";
}

void tst_Attributes::otherNamesImplyNothing() {
    QFETCH(const QString, name);
    QCOMPARE(attributeOfName(name), QString());
}

QTEST_GUILESS_MAIN(tst_Attributes)
#include "tst_Attributes.moc"
