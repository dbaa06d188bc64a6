#include "patch/PatchProblems.h"

#include "patch/Patch.h"

#include <QTest>

namespace {

using Patch = std::vector<PatchedFixture>;

/// A fixture of so many 8-bit controls from a 1-based address of universe 1.
PatchedFixture fixture(const QString& name, std::uint32_t address, std::uint32_t count = 4) {
    PatchedFixture result{.name = name, .universe = 1, .address = address, .controls = {}};
    for (std::uint32_t control = 0; control < count; ++control) {
        result.controls.push_back({.key = name, .slot = address - 1 + control});
    }
    return result;
}

} // namespace

class tst_PatchProblems : public QObject {
    Q_OBJECT

private slots:
    void eachFixtureIsToldWhatIsWrong_data();
    void eachFixtureIsToldWhatIsWrong();
    void aRigOnOneSlotIsToldInBrief();
};

void tst_PatchProblems::eachFixtureIsToldWhatIsWrong_data() {
    QTest::addColumn<Patch>("patch");
    QTest::addColumn<QStringList>("problems");

    QTest::newRow("no fixture") << Patch{} << QStringList{};
    QTest::newRow("nothing wrong") << Patch{fixture("A", 1), fixture("B", 5), fixture("C", 509)}
                                   << QStringList{{}, {}, {}};
    QTest::newRow("an overlap") << Patch{fixture("A", 1), fixture("B", 3)}
                                << QStringList{"Overlaps B in slots 3 to 4", "Overlaps A in slots 3 to 4"};
    QTest::newRow("with two") << Patch{fixture("A", 1), fixture("B", 4), fixture("C", 7)}
                              << QStringList{"Overlaps B in slot 4",
                                             "Overlaps A in slot 4\nOverlaps C in slot 7",
                                             "Overlaps B in slot 7"};
    QTest::newRow("one beside a third") << Patch{fixture("A", 1), fixture("B", 1), fixture("C", 2, 1)}
                                        << QStringList{"Overlaps B in slots 1 to 4\nOverlaps C in slot 2",
                                                       "Overlaps A in slots 1 to 4\nOverlaps C in slot 2",
                                                       "Overlaps A in slot 2\nOverlaps B in slot 2"};
    PatchedFixture gap = fixture("Gap", 1);
    gap.controls[1].dummy = true;
    QTest::newRow("around a gap") << Patch{fixture("A", 1), gap}
                                  << QStringList{"Overlaps Gap in slot 1 and slots 3 to 4",
                                                 "Overlaps A in slot 1 and slots 3 to 4"};
    QTest::newRow("past the end") << Patch{fixture("A", 510)}
                                  << QStringList{"Sends nothing on slot 513: a universe ends at slot 512"};
    QTest::newRow("both") << Patch{fixture("A", 510), fixture("B", 512, 1)}
                          << QStringList{"Overlaps B in slot 512\n"
                                         "Sends nothing on slot 513: a universe ends at slot 512",
                                         "Overlaps A in slot 512"};
    QTest::newRow("before the beginning") << Patch{fixture("A", static_cast<std::uint32_t>(-2), 1)}
                                          << QStringList{"Sends nothing: address -2 is before slot 1"};
}

void tst_PatchProblems::eachFixtureIsToldWhatIsWrong() {
    QFETCH(const Patch, patch);
    QFETCH(const QStringList, problems);
    const std::vector<QString> found = patchProblems(patch);
    QCOMPARE(QStringList(found.begin(), found.end()), problems);
    QVERIFY(std::ranges::all_of(found, [](const QString& text) { return text.isNull() || text != ""; }));
}

void tst_PatchProblems::aRigOnOneSlotIsToldInBrief() {
    const std::vector<QString> found = patchProblems(Patch(50'000, fixture("A", 7, 1)));
    QCOMPARE(found.size(), std::size_t{50'000});
    QCOMPARE(found.back(), QString("Overlaps A in slot 7\n").repeated(5) + "Overlaps more fixtures");
}

QTEST_APPLESS_MAIN(tst_PatchProblems)
#include "tst_PatchProblems.moc"
