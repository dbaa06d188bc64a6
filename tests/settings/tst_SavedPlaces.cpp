#include "settings/SavedPlaces.h"

#include "settings/UserDefaults.h"

#include <QTemporaryDir>
#include <QTest>

class tst_SavedPlaces : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void aWindowWithoutAPlaceHasNone();
    void aPlaceIsKeptUnderTheAutosaveName();
    void aPlaceIsThereInTheNextRun();
    void storedPlacesAreReadAsNumbers_data();
    void storedPlacesAreReadAsNumbers();
    void whatIsNoPairIsNoPlace_data();
    void whatIsNoPairIsNoPlace();

private:
    QString path() const { return folder_->filePath("defaults.plist"); }

    std::unique_ptr<QTemporaryDir> folder_;
    std::unique_ptr<UserDefaults> defaults_;
};

void tst_SavedPlaces::init() {
    folder_ = std::make_unique<QTemporaryDir>();
    defaults_ = std::make_unique<UserDefaults>(path());
}

void tst_SavedPlaces::cleanup() {
    defaults_.reset();
    folder_.reset();
}

void tst_SavedPlaces::aWindowWithoutAPlaceHasNone() {
    QVERIFY(!SavedPlaces(*defaults_).place("faderhall_window_0"));
}

void tst_SavedPlaces::aPlaceIsKeptUnderTheAutosaveName() {
    SavedPlaces places(*defaults_);
    places.setPlace("faderhall_window_0", QPoint(-40, 300));
    places.setPlace("faderhall_window_1", QPoint(5, 6));
    QCOMPARE(places.place("faderhall_window_0"), std::optional(QPoint(-40, 300)));
    QCOMPARE(places.place("faderhall_window_1"), std::optional(QPoint(5, 6)));
    QCOMPARE(defaults_->objectForKey("faderhall_window_0"), QVariant(QVariantList{-40LL, 300LL}));
}

void tst_SavedPlaces::aPlaceIsThereInTheNextRun() {
    SavedPlaces(*defaults_).setPlace("faderhall_main_window", QPoint(7, 8));
    QVERIFY(defaults_->synchronize());
    UserDefaults nextRun(path());
    QCOMPARE(SavedPlaces(nextRun).place("faderhall_main_window"), std::optional(QPoint(7, 8)));
}

void tst_SavedPlaces::storedPlacesAreReadAsNumbers_data() {
    QTest::addColumn<QVariantList>("stored");
    QTest::addColumn<QPoint>("place");

    QTest::newRow("digits") << QVariantList{"12", "34"} << QPoint(12, 34);
    QTest::newRow("reals") << QVariantList{12.9, -34.9} << QPoint(12, -34);
    QTest::newRow("beyond every screen")
        << QVariantList{9000000000LL, -1e30} << QPoint(2147483647, -2147483647 - 1);
    QTest::newRow("no numbers") << QVariantList{QVariantList{1LL}, QVariantMap()} << QPoint(0, 0);
}

void tst_SavedPlaces::storedPlacesAreReadAsNumbers() {
    QFETCH(const QVariantList, stored);
    QFETCH(const QPoint, place);

    defaults_->setObject(stored, "faderhall_window_0");
    QCOMPARE(SavedPlaces(*defaults_).place("faderhall_window_0"), std::optional(place));
}

void tst_SavedPlaces::whatIsNoPairIsNoPlace_data() {
    QTest::addColumn<QVariant>("stored");

    QTest::newRow("a string") << QVariant("12 34");
    QTest::newRow("an integer") << QVariant(12LL);
    QTest::newRow("nothing") << QVariant(QVariantList());
    QTest::newRow("one number") << QVariant(QVariantList{1LL});
    QTest::newRow("three numbers") << QVariant(QVariantList{1LL, 2LL, 3LL});
    QTest::newRow("a dictionary") << QVariant(QVariantMap{{"x", 1LL}, {"y", 2LL}});
}

void tst_SavedPlaces::whatIsNoPairIsNoPlace() {
    QFETCH(const QVariant, stored);

    defaults_->setObject(stored, "faderhall_window_0");
    QVERIFY(!SavedPlaces(*defaults_).place("faderhall_window_0"));
}

QTEST_GUILESS_MAIN(tst_SavedPlaces)
#include "tst_SavedPlaces.moc"
