#include "rig/ControlDefinition.h"

#include <QTest>

#include <limits>

class tst_ControlDefinition : public QObject {
    Q_OBJECT

private slots:
    void anEmptyEntryIsAnUnnamedFaderOf8BitsAt0();
    void exactlyTwoChannelsMakeAFaderOf16Bits_data();
    void exactlyTwoChannelsMakeAFaderOf16Bits();
    void defaultsAreReadAsIntegers_data();
    void defaultsAreReadAsIntegers();
    void flagsAreReadAsBooleans_data();
    void flagsAreReadAsBooleans();
    void aBlankIsAHiddenDummyWithItsOwnCount_data();
    void aBlankIsAHiddenDummyWithItsOwnCount();
    void aBlankKeepsTheRangeOfItsChannels();
    void aLabelIsADummyWithoutSlots();
    void aLabelOutweighsNameChannelsAndBlank();
    void aNameThatIsNoStringIsNone_data();
    void aNameThatIsNoStringIsNone();
    void theAttributeIsTheEntrysOrTheNames_data();
    void theAttributeIsTheEntrysOrTheNames();
    void aDummyHasNoAttribute_data();
    void aDummyHasNoAttribute();
};

void tst_ControlDefinition::anEmptyEntryIsAnUnnamedFaderOf8BitsAt0() {
    const ControlDefinition definition = ControlDefinition::fromEntry({});
    QVERIFY(definition.name.isNull());
    QCOMPARE(definition.defaultValue, 0U);
    QCOMPARE(definition.channels, 1U);
    QCOMPARE(definition.max, 255U);
    QVERIFY(!definition.header);
    QVERIFY(!definition.newlayer);
    QVERIFY(!definition.hide);
    QVERIFY(!definition.dummy);
}

void tst_ControlDefinition::exactlyTwoChannelsMakeAFaderOf16Bits_data() {
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<quint32>("channels");
    QTest::addColumn<quint32>("max");

    QTest::newRow("2") << QVariant(qlonglong{2}) << 2U << 65535U;
    QTest::newRow("2 as a string") << QVariant(QString("2")) << 2U << 65535U;
    QTest::newRow("a string that begins with 2") << QVariant(QString("2abc")) << 2U << 65535U;
    QTest::newRow("2 as a real") << QVariant(2.0) << 2U << 65535U;
    QTest::newRow("0") << QVariant(qlonglong{0}) << 1U << 255U;
    QTest::newRow("1") << QVariant(qlonglong{1}) << 1U << 255U;
    QTest::newRow("3") << QVariant(qlonglong{3}) << 1U << 255U;
    QTest::newRow("-2") << QVariant(qlonglong{-2}) << 1U << 255U;
    QTest::newRow("2 beyond 32 bits") << QVariant(qlonglong{0x100000002}) << 1U << 255U;
    QTest::newRow("a string without a number") << QVariant(QString("two")) << 1U << 255U;
    QTest::newRow("true") << QVariant(true) << 1U << 255U;
    QTest::newRow("an array") << QVariant(QVariantList{qlonglong{2}}) << 1U << 255U;
}

void tst_ControlDefinition::exactlyTwoChannelsMakeAFaderOf16Bits() {
    QFETCH(const QVariant, stored);
    const ControlDefinition definition = ControlDefinition::fromEntry({{"channels", stored}});
    QTEST(definition.channels, "channels");
    QTEST(definition.max, "max");
    QVERIFY(!definition.dummy);
}

void tst_ControlDefinition::defaultsAreReadAsIntegers_data() {
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<quint32>("level");

    QTest::newRow("1000") << QVariant(qlonglong{1000}) << 1000U;
    QTest::newRow("12 as a string") << QVariant(QString("12")) << 12U;
    QTest::newRow("a string that begins with 5") << QVariant(QString("5abc")) << 5U;
    QTest::newRow("a string without a number") << QVariant(QString("abc")) << 0U;
    QTest::newRow("an empty string") << QVariant(QString("")) << 0U;
    QTest::newRow("a real") << QVariant(3.9) << 3U;
    QTest::newRow("not a number") << QVariant(std::numeric_limits<double>::quiet_NaN()) << 0U;
    QTest::newRow("-1") << QVariant(qlonglong{-1}) << 4294967295U;
    QTest::newRow("beyond 32 bits") << QVariant(qlonglong{5'000'000'000}) << 2147483647U;
    QTest::newRow("a dictionary") << QVariant(QVariantMap{{"default", qlonglong{7}}}) << 0U;
}

void tst_ControlDefinition::defaultsAreReadAsIntegers() {
    QFETCH(const QVariant, stored);
    QTEST(ControlDefinition::fromEntry({{"default", stored}}).defaultValue, "level");
}

void tst_ControlDefinition::flagsAreReadAsBooleans_data() {
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<bool>("flag");

    QTest::newRow("true") << QVariant(true) << true;
    QTest::newRow("false") << QVariant(false) << false;
    QTest::newRow("1") << QVariant(qlonglong{1}) << true;
    QTest::newRow("0") << QVariant(qlonglong{0}) << false;
    QTest::newRow("YES") << QVariant(QString("YES")) << true;
    QTest::newRow("no") << QVariant(QString("no")) << false;
    QTest::newRow("1 as a string") << QVariant(QString("1")) << true;
    QTest::newRow("an array") << QVariant(QVariantList{true}) << false;
}

void tst_ControlDefinition::flagsAreReadAsBooleans() {
    QFETCH(const QVariant, stored);
    const ControlDefinition header = ControlDefinition::fromEntry({{"header", stored}});
    QTEST(header.header, "flag");
    QVERIFY(!header.newlayer);
    const ControlDefinition newlayer = ControlDefinition::fromEntry({{"newlayer", stored}});
    QTEST(newlayer.newlayer, "flag");
    QVERIFY(!newlayer.header);
}

void tst_ControlDefinition::aBlankIsAHiddenDummyWithItsOwnCount_data() {
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<quint32>("channels");

    QTest::newRow("4") << QVariant(qlonglong{4}) << 4U;
    QTest::newRow("2") << QVariant(qlonglong{2}) << 2U;
    QTest::newRow("0 is present too") << QVariant(qlonglong{0}) << 0U;
    QTest::newRow("a string") << QVariant(QString("12")) << 12U;
    QTest::newRow("no number at all") << QVariant(QVariantList()) << 0U;
    QTest::newRow("-1") << QVariant(qlonglong{-1}) << 4294967295U;
}

void tst_ControlDefinition::aBlankIsAHiddenDummyWithItsOwnCount() {
    QFETCH(const QVariant, stored);
    const ControlDefinition definition = ControlDefinition::fromEntry({{"blank", stored}});
    QTEST(definition.channels, "channels");
    QVERIFY(definition.hide);
    QVERIFY(definition.dummy);
    QCOMPARE(definition.max, 255U);
}

void tst_ControlDefinition::aBlankKeepsTheRangeOfItsChannels() {
    const ControlDefinition definition =
        ControlDefinition::fromEntry({{"channels", qlonglong{2}}, {"blank", qlonglong{3}}});
    QCOMPARE(definition.channels, 3U);
    QCOMPARE(definition.max, 65535U);
}

void tst_ControlDefinition::aLabelIsADummyWithoutSlots() {
    const ControlDefinition definition = ControlDefinition::fromEntry({{"label", "Pan"}});
    QCOMPARE(definition.name, "Pan");
    QCOMPARE(definition.channels, 0U);
    QVERIFY(definition.dummy);
    QVERIFY(!definition.hide);
}

void tst_ControlDefinition::aLabelOutweighsNameChannelsAndBlank() {
    const ControlDefinition definition = ControlDefinition::fromEntry(
        {{"label", "Pan"}, {"name", "Tilt"}, {"channels", qlonglong{2}}, {"blank", qlonglong{4}}});
    QCOMPARE(definition.name, "Pan");
    QCOMPARE(definition.channels, 0U);
    QVERIFY(definition.dummy);
    QVERIFY(definition.hide);
}

void tst_ControlDefinition::aNameThatIsNoStringIsNone_data() {
    QTest::addColumn<QVariant>("stored");
    QTest::newRow("a number") << QVariant(qlonglong{5});
    QTest::newRow("an array") << QVariant(QVariantList{"Pan"});
    QTest::newRow("data") << QVariant(QByteArray("Pan"));
}

void tst_ControlDefinition::aNameThatIsNoStringIsNone() {
    QFETCH(const QVariant, stored);
    QVERIFY(ControlDefinition::fromEntry({{"name", stored}}).name.isNull());
    const ControlDefinition label = ControlDefinition::fromEntry({{"label", stored}, {"name", "Pan"}});
    QVERIFY(label.name.isNull());
    QVERIFY(label.dummy);
}

void tst_ControlDefinition::theAttributeIsTheEntrysOrTheNames_data() {
    QTest::addColumn<QVariantMap>("entry");
    QTest::addColumn<QString>("attribute");

    QTest::newRow("neither") << QVariantMap() << "";
    QTest::newRow("a plain name") << QVariantMap{{"name", "Red #"}} << "ColorAdd_R";
    QTest::newRow("another name") << QVariantMap{{"name", "Macro"}} << "";
    QTest::newRow("an attribute") << QVariantMap{{"attribute", "Zoom"}} << "Zoom";
    QTest::newRow("an attribute and another name")
        << QVariantMap{{"name", "Macro"}, {"attribute", "Effects1"}} << "Effects1";
    QTest::newRow("an attribute against the name")
        << QVariantMap{{"name", "Red"}, {"attribute", "Color1"}} << "Color1";
    QTest::newRow("an attribute that nobody knows") << QVariantMap{{"attribute", "x y"}} << "x y";
    QTest::newRow("none, whatever the name says") << QVariantMap{{"name", "Red"}, {"attribute", ""}} << "";
    QTest::newRow("an attribute that is no string")
        << QVariantMap{{"name", "Red"}, {"attribute", qlonglong{1}}} << "ColorAdd_R";
    QTest::newRow("over two slots") << QVariantMap{{"name", "Pan"}, {"channels", qlonglong{2}}} << "Pan";
}

void tst_ControlDefinition::theAttributeIsTheEntrysOrTheNames() {
    QFETCH(const QVariantMap, entry);
    QTEST(ControlDefinition::fromEntry(entry).attribute, "attribute");
}

void tst_ControlDefinition::aDummyHasNoAttribute_data() {
    QTest::addColumn<QVariantMap>("entry");

    QTest::newRow("a label") << QVariantMap{{"label", "Red"}};
    QTest::newRow("a label with an attribute") << QVariantMap{{"label", "Light"}, {"attribute", "Dimmer"}};
    QTest::newRow("a named blank") << QVariantMap{{"blank", qlonglong{1}}, {"name", "Red"}};
    QTest::newRow("a blank with an attribute") << QVariantMap{{"blank", qlonglong{1}}, {"attribute", "Pan"}};
}

void tst_ControlDefinition::aDummyHasNoAttribute() {
    QFETCH(const QVariantMap, entry);
    QVERIFY(ControlDefinition::fromEntry(entry).attribute.isEmpty());
}

QTEST_APPLESS_MAIN(tst_ControlDefinition)
#include "tst_ControlDefinition.moc"
