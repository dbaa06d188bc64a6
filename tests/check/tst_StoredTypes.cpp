#include "check/StoredTypes.h"

#include "check/Report.h"
#include "plist/PropertyListTypes.h"

#include <QTest>

#include <cmath>

class tst_StoredTypes : public QObject {
    Q_OBJECT

private slots:
    void aValueIsReadAsWhatItSays_data();
    void aValueIsReadAsWhatItSays();
    void aValueIsNamedInAProblem_data();
    void aValueIsNamedInAProblem();
    void onlyTheFieldsThatAreThereAreChecked();
};

void tst_StoredTypes::aValueIsReadAsWhatItSays_data() {
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("types"); // of Text, Integer, Number, Flag, List, Dictionary the first letters

    const double nan = std::nan("");
    QTest::newRow("a text") << QVariant("Spot") << "T";
    QTest::newRow("an empty text") << QVariant("") << "T";
    QTest::newRow("digits") << QVariant("12") << "TINF";
    QTest::newRow("digits between blanks") << QVariant(" -12 ") << "TINF";
    QTest::newRow("digits and more") << QVariant("12abc") << "T";
    QTest::newRow("a decimal text") << QVariant("1.5") << "TN";
    QTest::newRow("a decimal comma") << QVariant("1,5") << "T";
    QTest::newRow("a power") << QVariant("1e3") << "TN";
    QTest::newRow("too many digits") << QVariant("99999999999") << "TNF";
    QTest::newRow("an integer") << QVariant(12LL) << "INF";
    QTest::newRow("beyond 32 bits") << QVariant(2147483648LL) << "NF";
    QTest::newRow("a whole real") << QVariant(3.0) << "INF";
    QTest::newRow("a real") << QVariant(2.5) << "NF";
    QTest::newRow("no number") << QVariant(nan) << "F";
    QTest::newRow("a boolean") << QVariant(true) << "F";
    QTest::newRow("yes") << QVariant("Yes") << "TF";
    QTest::newRow("maybe") << QVariant("maybe") << "T";
    QTest::newRow("an array") << QVariant(QVariantList{}) << "L";
    QTest::newRow("a dictionary") << QVariant(QVariantMap{}) << "D";
    QTest::newRow("data") << QVariant(QByteArray("12")) << "";
    QTest::newRow("a date") << QVariant::fromValue(PropertyListDate{}) << "";
}

void tst_StoredTypes::aValueIsReadAsWhatItSays() {
    QFETCH(const QVariant, value);
    QFETCH(const QString, types);
    using enum StoredType;
    QString found;
    for (const auto& [type, letter] :
         {std::pair(Text, 'T'), std::pair(Integer, 'I'), std::pair(Number, 'N'), std::pair(Flag, 'F'),
          std::pair(List, 'L'), std::pair(Dictionary, 'D')}) {
        found += isOf(type, value) ? QString(QChar(letter)) : QString();
    }
    QCOMPARE(found, types);
}

void tst_StoredTypes::aValueIsNamedInAProblem_data() {
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("text");

    QTest::newRow("a text") << QVariant("two") << "the text 'two'";
    QTest::newRow("an integer") << QVariant(-5LL) << "-5";
    QTest::newRow("a large one") << QVariant(99999999999LL) << "99999999999";
    QTest::newRow("a real") << QVariant(2.5) << "2.5";
    QTest::newRow("a boolean") << QVariant(false) << "a boolean";
    QTest::newRow("an array") << QVariant(QVariantList{}) << "an array";
    QTest::newRow("a dictionary") << QVariant(QVariantMap{}) << "a dictionary";
    QTest::newRow("data") << QVariant(QByteArray("12")) << "data";
    QTest::newRow("a date") << QVariant::fromValue(PropertyListDate{}) << "a date";
    QTest::newRow("a reference") << QVariant::fromValue(PropertyListUid{}) << "a reference";
}

void tst_StoredTypes::aValueIsNamedInAProblem() {
    QFETCH(const QVariant, value);
    QFETCH(const QString, text);
    QCOMPARE(described(value), text);
}

void tst_StoredTypes::onlyTheFieldsThatAreThereAreChecked() {
    const std::array fields = {StoredField{QLatin1StringView("name"), StoredType::Text},
                               StoredField{QLatin1StringView("blank"), StoredType::Integer, 0, 4},
                               StoredField{QLatin1StringView("time"), StoredType::Number}};
    Report report("rig");
    checkFields({{"name", "Spot"}, {"blank", 4LL}}, fields, "entry 1", report);
    QCOMPARE(report.lines(), QStringList());
    checkFields({{"name", 1LL}, {"blank", 5LL}, {"time", "soon"}, {"other", 7LL}}, fields, "entry 1", report);
    const QStringList expected{"rig: entry 1: 'name' is 1, which reads as nothing; make it a text",
                               "rig: entry 1: 'blank' is 5; make it 0 to 4",
                               "rig: entry 1: 'time' is the text 'soon', which reads as 0; make it a number"};
    QCOMPARE(report.lines(), expected);
}

QTEST_APPLESS_MAIN(tst_StoredTypes)
#include "tst_StoredTypes.moc"
