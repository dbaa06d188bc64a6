#include "TestPanel.h"
#include "plist/PropertyList.h"
#include "support/TestClock.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QMimeData>
#include <QTest>

#include <array>
#include <memory>

namespace {

constexpr std::uint64_t Second = 1'000'000'000;

QVariant uid(quint32 index) {
    return QVariant::fromValue(PropertyListUid{index});
}

QByteArray archiveOf(const QVariant& element) {
    const QVariantMap arrayClass{{"$classname", "NSArray"}, {"$classes", QVariantList{"NSArray"}}};
    return writeBinaryPropertyList(QVariantMap{
        {"$archiver", "NSKeyedArchiver"},
        {"$version", qlonglong{100000}},
        {"$top", QVariantMap{{"root", uid(1)}}},
        {"$objects",
         QVariantList{"$null", QVariantMap{{"NS.objects", QVariantList{uid(2)}}, {"$class", uid(3)}}, element,
                      arrayClass}},
    });
}

void putOnPasteboard(const QString& type, const QByteArray& bytes) {
    auto data = std::make_unique<QMimeData>();
    data->setData(type, bytes);
    QGuiApplication::clipboard()->setMimeData(data.release());
}

} // namespace

/// Levels copied and pasted between faders.
class tst_ControlPasteboard : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void aCopyIsAKeyedArchiveUnderPlainText();
    void aLevelIsPastedIntoAnotherControl();
    void aPastedLevelIsImmediate();
    void aPastedLevelIsRedrawnWhenItIsNew();
    void aPasteDuringAFadeIsOverwrittenByIt();
    void aPasteEndsTheEntry();
    void aLevelOf16BitsIsPastedWholeIntoAnEightBitControl();
    void strangeLevelsArePastedAsTheyAre_data();
    void strangeLevelsArePastedAsTheyAre();
    void anythingElseOnThePasteboardChangesNothing_data();
    void anythingElseOnThePasteboardChangesNothing();
    void anEmptyPasteboardChangesNothing();
    void copyAndPasteAreFoundByName();
    void withoutASelectedFaderNothingIsCopiedNorPasted();

private:
    std::unique_ptr<TestPanel> panel_;
    DMXControl* pan_ = nullptr;
    DMXControl* tilt_ = nullptr; // 16 bit
};

void tst_ControlPasteboard::init() {
    panel_ = std::make_unique<TestPanel>(QVariantList{controlEntry("Pan"), wideEntry("Tilt")});
    pan_ = &panel_->fader("Pan");
    tilt_ = &panel_->fader("Tilt");
    QVERIFY(panel_->bringToFront());
    panel_->view().select(*pan_);
}

void tst_ControlPasteboard::cleanup() {
    panel_.reset();
    QGuiApplication::clipboard()->clear();
}

void tst_ControlPasteboard::aCopyIsAKeyedArchiveUnderPlainText() {
    pan_->setValue(128);
    panel_->view().copy();
    const QMimeData* const pasteboard = QGuiApplication::clipboard()->mimeData();
    QCOMPARE(pasteboard->formats(), QStringList("text/plain"));
    const QByteArray bytes = pasteboard->data("text/plain");
    QCOMPARE(bytes.first(8), "bplist00");
    const auto archive = readPropertyList(bytes, 65536);
    QVERIFY(archive);
    QCOMPARE(
        archive->toMap(),
        (QVariantMap{
            {"$archiver", "NSKeyedArchiver"},
            {"$version", qlonglong{100000}},
            {"$top", QVariantMap{{"root", uid(1)}}},
            {"$objects",
             QVariantList{
                 "$null", QVariantMap{{"NS.objects", QVariantList{uid(2)}}, {"$class", uid(3)}}, "128",
                 QVariantMap{{"$classname", "NSArray"}, {"$classes", QVariantList{"NSArray", "NSObject"}}}}},
        }));
}

void tst_ControlPasteboard::aLevelIsPastedIntoAnotherControl() {
    pan_->setValue(128);
    panel_->view().copy();
    pan_->setValue(3);
    panel_->view().select(*tilt_);
    panel_->view().paste();
    QCOMPARE(tilt_->value(), 128U);
    QCOMPARE(pan_->value(), 3U);
    panel_->view().select(*pan_);
    panel_->view().paste();
    QCOMPARE(pan_->value(), 128U);
}

void tst_ControlPasteboard::aPastedLevelIsImmediate() {
    putOnPasteboard("text/plain", archiveOf("200"));
    pan_->setTime(5);
    panel_->view().paste();
    QCOMPARE(pan_->value(), 200U);
    QCOMPARE(pan_->time(), 5.0F);
    QVERIFY(!pan_->fade().running());
}

void tst_ControlPasteboard::aPastedLevelIsRedrawnWhenItIsNew() {
    putOnPasteboard("text/plain", archiveOf("200"));
    const auto paints = panel_->paintsOf(*pan_);
    paints->take();
    panel_->view().paste();
    QCOMPARE(paints->take(), 1);
    panel_->view().paste();
    QCOMPARE(paints->take(), 0);
}

void tst_ControlPasteboard::aPasteDuringAFadeIsOverwrittenByIt() {
    TestClock clock(0);
    std::array<std::uint8_t, 512> levels{};
    putOnPasteboard("text/plain", archiveOf("7"));
    pan_->setDMXValue(200, 2);
    panel_->view().paste();
    QCOMPARE(pan_->value(), 7U);
    clock.set(Second);
    pan_->updateDMX(levels);
    QCOMPARE(pan_->value(), 100U);
}

void tst_ControlPasteboard::aPasteEndsTheEntry() {
    putOnPasteboard("text/plain", archiveOf("7"));
    QTest::keyClick(panel_->view().windowHandle(), '9');
    QVERIFY(panel_->view().findChild<QLabel*>("gEditView"));
    panel_->view().paste();
    QVERIFY(!panel_->view().findChild<QLabel*>("gEditView"));
    QTest::keyClick(panel_->view().windowHandle(), Qt::Key_Return);
    QCOMPARE(pan_->value(), 7U);
}

void tst_ControlPasteboard::aLevelOf16BitsIsPastedWholeIntoAnEightBitControl() {
    std::array<std::uint8_t, 512> levels{};
    tilt_->setValue(40000);
    panel_->view().select(*tilt_);
    panel_->view().copy();
    panel_->view().select(*pan_);
    panel_->view().paste();
    QCOMPARE(pan_->value(), 40000U);
    QVERIFY(pan_->updateDMX(levels));
    QCOMPARE(levels[0], 64); // the low byte
    QCOMPARE(levels[1], 0);
}

void tst_ControlPasteboard::strangeLevelsArePastedAsTheyAre_data() {
    QTest::addColumn<QVariant>("element");
    QTest::addColumn<quint32>("level");

    QTest::newRow("text that begins with a number") << QVariant("5abc") << 5U;
    QTest::newRow("text without a number") << QVariant("abc") << 0U;
    QTest::newRow("a negative level") << QVariant("-1") << 4294967295U;
    QTest::newRow("beyond 32 bits") << QVariant("99999999999") << 2147483647U;
    QTest::newRow("a number") << QVariant(qlonglong{9}) << 9U;
}

void tst_ControlPasteboard::strangeLevelsArePastedAsTheyAre() {
    QFETCH(const QVariant, element);
    putOnPasteboard("text/plain", archiveOf(element));
    pan_->setValue(77);
    panel_->view().paste();
    QTEST(pan_->value(), "level");
    panel_->view().grab(); // whatever it is, it can be drawn
}

void tst_ControlPasteboard::anythingElseOnThePasteboardChangesNothing_data() {
    QTest::addColumn<QString>("type");
    QTest::addColumn<QByteArray>("bytes");

    QTest::newRow("text") << "text/plain" << QByteArray("128");
    QTest::newRow("no bytes") << "text/plain" << QByteArray("");
    QTest::newRow("another type") << "text/html" << archiveOf("128");
    QTest::newRow("a list of another kind")
        << "text/plain" << writeBinaryPropertyList(QVariantMap{{"value", "128"}});
    QTest::newRow("an archive of something else") << "text/plain" << archiveOf(QVariantList{"128"});
    QTest::newRow("an archive cut short") << "text/plain" << archiveOf("128").chopped(1);
    QTest::newRow("an image") << "image/png" << QByteArray("\x89PNG");
}

void tst_ControlPasteboard::anythingElseOnThePasteboardChangesNothing() {
    QFETCH(const QString, type);
    QFETCH(const QByteArray, bytes);
    putOnPasteboard(type, bytes);
    pan_->setValue(77);
    QTest::keyClick(panel_->view().windowHandle(), '9');
    panel_->view().paste();
    QCOMPARE(pan_->value(), 77U);
    QCOMPARE(panel_->view().findChild<QLabel*>("gEditView")->text(), "9");
}

void tst_ControlPasteboard::anEmptyPasteboardChangesNothing() {
    QGuiApplication::clipboard()->clear();
    pan_->setValue(77);
    panel_->view().paste();
    QCOMPARE(pan_->value(), 77U);
}

// The menu asks whatever has the focus, without knowing what it is.
void tst_ControlPasteboard::copyAndPasteAreFoundByName() {
    pan_->setValue(12);
    QVERIFY(QMetaObject::invokeMethod(QApplication::focusWidget(), "copy"));
    pan_->setValue(3);
    QVERIFY(QMetaObject::invokeMethod(QApplication::focusWidget(), "paste"));
    QCOMPARE(pan_->value(), 12U);
}

void tst_ControlPasteboard::withoutASelectedFaderNothingIsCopiedNorPasted() {
    putOnPasteboard("text/plain", archiveOf("7"));
    TestPanel other(*panel_, {controlEntry("Zoom", 9)}, "Spot 2");
    QVERIFY(other.bringToFront());
    other.view().copy();
    other.view().paste();
    QCOMPARE(other.fader("Zoom").value(), 9U);
    QCOMPARE(QGuiApplication::clipboard()->mimeData()->data("text/plain"), archiveOf("7"));
}

QTEST_MAIN(tst_ControlPasteboard)
#include "tst_ControlPasteboard.moc"
