#include "adding/FixtureChoices.h"

#include <QAbstractItemModelTester>
#include <QTest>

namespace {

FixtureChoice choice(const QString& text, quint64 channels) {
    return {.text = text,
            .model = text,
            .from = "Console",
            .profile = text,
            .file = {},
            .mode = {},
            .channels = channels};
}

QStringList shown(const FixtureChoices& choices) {
    QStringList texts;
    for (int row = 0; row < choices.rowCount(); ++row) {
        texts.append(choices.index(row, FixtureChoices::Fixture).data().toString());
    }
    return texts;
}

} // namespace

class tst_FixtureChoices : public QObject {
    Q_OBJECT

private slots:
    void everyFixtureHasARowWithItsChannels();
    void itKeepsTheRulesOfTheToolkit();
    void onlyThoseWithAllWordsAreShown_data();
    void onlyThoseWithAllWordsAreShown();
    void whatIsAddedIsSearchedToo();
    void fourThousandAreSearched();
};

void tst_FixtureChoices::everyFixtureHasARowWithItsChannels() {
    FixtureChoices choices;
    choices.append({choice("Par", 5), choice("Dimmer", 1)});
    QCOMPARE(shown(choices), (QStringList{"Par", "Dimmer"}));
    QCOMPARE(choices.index(0, FixtureChoices::Channels).data().toInt(), 5);
    QCOMPARE(choices.index(1, FixtureChoices::From).data().toString(), QString("Console"));
    QCOMPARE(choices.headerData(1, Qt::Horizontal, Qt::DisplayRole).toString(), QString("Channels"));
    QCOMPARE(choices.choice(choices.index(1, 0))->profile, QString("Dimmer"));
    QVERIFY(!choices.choice({}));
}

void tst_FixtureChoices::itKeepsTheRulesOfTheToolkit() {
    FixtureChoices choices;
    const QAbstractItemModelTester tester(&choices, QAbstractItemModelTester::FailureReportingMode::QtTest);
    choices.append({choice("Par", 5), choice("Dimmer", 1)});
    choices.setWords("dim");
    choices.setWords("");
}

void tst_FixtureChoices::onlyThoseWithAllWordsAreShown_data() {
    QTest::addColumn<QString>("words");
    QTest::addColumn<QStringList>("expected");

    const QString extended = "Acme Spot 300 - Extended";
    const QString standard = "Acme Spot 300 - Standard";
    const QString wash = "Bright Wash - Standard";
    QTest::newRow("none") << "" << QStringList{extended, standard, wash};
    QTest::newRow("of the maker") << "acme" << QStringList{extended, standard};
    QTest::newRow("in another order") << "stand 300 ac" << QStringList{standard};
    QTest::newRow("capitals") << "WASH" << QStringList{wash};
    QTest::newRow("blanks only") << "   " << QStringList{extended, standard, wash};
    QTest::newRow("one that nobody has") << "acme zoom" << QStringList();
}

void tst_FixtureChoices::onlyThoseWithAllWordsAreShown() {
    QFETCH(const QString, words);
    FixtureChoices choices;
    choices.append({choice("Acme Spot 300 - Extended", 30), choice("Acme Spot 300 - Standard", 20),
                    choice("Bright Wash - Standard", 12)});
    choices.setWords(words);
    QTEST(shown(choices), "expected");
}

void tst_FixtureChoices::whatIsAddedIsSearchedToo() {
    FixtureChoices choices;
    choices.append({choice("Par", 5)});
    choices.setWords("wash");
    QCOMPARE(shown(choices), QStringList());
    choices.append({choice("Wash", 12), choice("Spot", 20)});
    QCOMPARE(shown(choices), QStringList{"Wash"});
}

void tst_FixtureChoices::fourThousandAreSearched() {
    constexpr int count = 4000;
    std::vector<FixtureChoice> many;
    many.reserve(count);
    for (int i = 0; i < count; ++i) {
        many.push_back(choice(QString("Maker %1 Model %2 - Mode %3").arg(i % 90).arg(i).arg(i % 7), 16));
    }
    FixtureChoices choices;
    choices.append(std::move(many));
    choices.setWords("mode 1234");
    QCOMPARE(shown(choices), QStringList{"Maker 64 Model 1234 - Mode 2"});
}

QTEST_APPLESS_MAIN(tst_FixtureChoices)
#include "tst_FixtureChoices.moc"
