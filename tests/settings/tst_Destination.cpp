#include "settings/Destination.h"

#include "settings/UserDefaults.h"

#include <QTemporaryDir>
#include <QTest>

namespace {

const char* const addressKey = "tx_address";

} // namespace

class tst_Destination : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void thereIsNoAddressAtFirst();
    void withoutAStoredAddressItIsThisMachine();
    void anAddressIsTakenAndRemembered_data();
    void anAddressIsTakenAndRemembered();
    void anythingElseLeavesTheAddressAlone_data();
    void anythingElseLeavesTheAddressAlone();
    void aDamagedStoredAddressIsRefused();

private:
    std::unique_ptr<QTemporaryDir> folder_;
    std::unique_ptr<UserDefaults> defaults_;
};

void tst_Destination::init() {
    folder_ = std::make_unique<QTemporaryDir>();
    defaults_ = std::make_unique<UserDefaults>(folder_->filePath("defaults.plist"));
}

void tst_Destination::cleanup() {
    defaults_.reset();
    folder_.reset();
}

void tst_Destination::thereIsNoAddressAtFirst() {
    const Destination destination(*defaults_);
    QCOMPARE(destination.tx_address(), 0U);
    QVERIFY(destination.text().isNull());
}

void tst_Destination::withoutAStoredAddressItIsThisMachine() {
    Destination destination(*defaults_);
    destination.setIPAddress({});
    QCOMPARE(destination.tx_address(), 0x7F000001U);
    QCOMPARE(destination.text(), QString("127.0.0.1"));
    QCOMPARE(defaults_->objectForKey(addressKey), QVariant("127.0.0.1"));
}

void tst_Destination::anAddressIsTakenAndRemembered_data() {
    QTest::addColumn<QString>("typed");
    QTest::addColumn<quint32>("address");
    QTest::addColumn<QString>("shown");

    QTest::newRow("broadcast") << "192.168.1.255" << 0xC0A801FFU << "192.168.1.255";
    QTest::newRow("blanks around") << " 10.0.0.1 " << 0x0A000001U << "10.0.0.1";
    QTest::newRow("leading zeros") << "010.1.1.1" << 0x0A010101U << "10.1.1.1";
    QTest::newRow("letters behind") << "1.2.3.4xyz" << 0x01020304U << "1.2.3.4";
    QTest::newRow("the address that is set") << "2.0.0.1" << 0x02000001U << "2.0.0.1";
    QTest::newRow("all zero") << "0.0.0.0" << 0U << "0.0.0.0";
}

void tst_Destination::anAddressIsTakenAndRemembered() {
    QFETCH(const QString, typed);
    QFETCH(const quint32, address);
    QFETCH(const QString, shown);

    Destination destination(*defaults_);
    destination.setIPAddress("2.0.0.1");
    destination.setIPAddress(typed);
    QCOMPARE(destination.tx_address(), address);
    QCOMPARE(destination.text(), shown);
    QCOMPARE(defaults_->objectForKey(addressKey), QVariant(shown));
}

void tst_Destination::anythingElseLeavesTheAddressAlone_data() {
    QTest::addColumn<QString>("typed");

    QTest::newRow("a number past 255") << "256.1.1.1";
    QTest::newRow("three numbers") << "1.2.3";
    QTest::newRow("a negative number") << "-1.2.3.4";
    QTest::newRow("nothing") << "";
    QTest::newRow("a name") << "localhost";
    QTest::newRow("letters that look like digits") << "\u0661.2.3.4";
    QTest::newRow("half of a surrogate pair") << QString(QChar(0xD800));
}

void tst_Destination::anythingElseLeavesTheAddressAlone() {
    QFETCH(const QString, typed);

    Destination destination(*defaults_);
    destination.setIPAddress("192.168.1.255");
    destination.setIPAddress(typed);
    QCOMPARE(destination.tx_address(), 0xC0A801FFU);
    QCOMPARE(destination.text(), QString("192.168.1.255"));
    QCOMPARE(defaults_->objectForKey(addressKey), QVariant("192.168.1.255"));
}

void tst_Destination::aDamagedStoredAddressIsRefused() {
    defaults_->setObject("somewhere", addressKey);
    Destination destination(*defaults_);
    destination.setIPAddress(defaults_->objectForKey(addressKey).toString());
    QCOMPARE(destination.tx_address(), 0U);
    QCOMPARE(destination.text(), QString("somewhere"));
}

QTEST_GUILESS_MAIN(tst_Destination)
#include "tst_Destination.moc"
