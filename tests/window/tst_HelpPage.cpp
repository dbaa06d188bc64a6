#include "window/HelpPage.h"

#include <QPointer>
#include <QTest>

#include <memory>

class tst_HelpPage : public QObject {
    Q_OBJECT

private slots:
    void theKeysPageTellsTheKeys_data();
    void theKeysPageTellsTheKeys();
    void theAboutPageTellsTheLicences_data();
    void theAboutPageTellsTheLicences();
    void aPageIsAWindowOfItsOwn();
    void aPageThatIsOpenComesToTheFront();
    void escapeClosesAPage();
    void aPageGoesWithItsWindow();
};

void tst_HelpPage::theKeysPageTellsTheKeys_data() {
    QTest::addColumn<QString>("told");

    for (const char* told : {"Ctrl+A", "Ctrl+R", "Ctrl+N", "Ctrl+W", "Ctrl+X", "Ctrl+Alt+X", "Ctrl+C",
                             "Ctrl+V", "Ctrl+Q", "Ctrl+0", "Alt+=", "Backspace", "Escape", "F1"}) {
        QTest::newRow(told) << told;
    }
}

void tst_HelpPage::theKeysPageTellsTheKeys() {
    QFETCH(const QString, told);
    QWidget window;
    QVERIFY(openKeysPage(window).toPlainText().contains(told));
}

void tst_HelpPage::theAboutPageTellsTheLicences_data() {
    QTest::addColumn<QString>("told");

    QTest::newRow("its own") << "MIT";
    QTest::newRow("the version") << "Faderhall 1.2.3";
    QTest::newRow("the toolkit's") << QString("Qt ") + qVersion();
    QTest::newRow("the toolkit's name") << "GNU Lesser General Public License, version 3";
    QTest::newRow("that of property lists") << "libplist";
    QTest::newRow("that one's name") << "GNU Lesser General Public License, version 2.1 or later";
}

void tst_HelpPage::theAboutPageTellsTheLicences() {
    QFETCH(const QString, told);
    QCoreApplication::setApplicationVersion("1.2.3");
    QWidget window;
    const QString page = openAboutPage(window).toPlainText().simplified();
    QVERIFY2(page.contains(told), qUtf8Printable(page));
}

void tst_HelpPage::aPageIsAWindowOfItsOwn() {
    QWidget window;
    window.show();
    const HelpPage& page = openKeysPage(window);
    QVERIFY(page.isWindow());
    QVERIFY(page.isVisible());
    QCOMPARE(page.windowTitle(), QString("Keys"));
}

void tst_HelpPage::aPageThatIsOpenComesToTheFront() {
    QWidget window;
    window.show();
    const HelpPage& keys = openKeysPage(window);
    const HelpPage& about = openAboutPage(window);
    QTRY_COMPARE(QApplication::activeWindow(), static_cast<const QWidget*>(&about));
    QCOMPARE(&openKeysPage(window), &keys);
    QTRY_COMPARE(QApplication::activeWindow(), static_cast<const QWidget*>(&keys));
    QCOMPARE(window.findChildren<HelpPage*>().size(), 2);
}

void tst_HelpPage::escapeClosesAPage() {
    QWidget window;
    window.show();
    const QPointer<HelpPage> page(&openKeysPage(window));
    QTest::keyClick(page, Qt::Key_Escape);
    QTRY_VERIFY(!page);
}

void tst_HelpPage::aPageGoesWithItsWindow() {
    auto window = std::make_unique<QWidget>();
    const QPointer<HelpPage> page(&openKeysPage(*window));
    window.reset();
    QVERIFY(!page);
}

QTEST_MAIN(tst_HelpPage)
#include "tst_HelpPage.moc"
