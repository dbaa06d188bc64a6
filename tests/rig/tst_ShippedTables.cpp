#include "plist/DictionaryFile.h"
#include "settings/Configurations.h"
#include "support/StandardOutput.h"
#include "support/TestRig.h"

#include <QSet>
#include <QTest>

#include <algorithm>
#include <memory>

namespace {

constexpr QSize smallScreen(1024, 700); // with room for its panels

std::optional<QVariantMap> table(const QString& name) {
    return DictionaryFile(QFINDTESTDATA("../../resources/" + name + ".plist")).read();
}

bool isAscii(const QString& text) {
    return std::ranges::all_of(text, [](QChar c) { return c >= u' ' && c <= u'~'; });
}

} // namespace

/// The tables that ship with the program: what they hold can be shown, driven and told apart.
class tst_ShippedTables : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup() { rig_.reset(); }

    void theFirstStartFindsItsConfiguration();
    void everyProfileHoldsOnlyWhatIsReadOfIt_data();
    void everyProfileHoldsOnlyWhatIsReadOfIt();
    void everyProfileIsUsed();
    void everyPlacementIsComplete_data();
    void everyPlacementIsComplete();
    void everyFixtureUnfoldsWithoutAWord_data();
    void everyFixtureUnfoldsWithoutAWord();
    void everyControlHasAKeyOfItsOwn_data();
    void everyControlHasAKeyOfItsOwn();
    void noSlotIsDrivenTwiceOrLiesOutside_data();
    void noSlotIsDrivenTwiceOrLiesOutside();
    void everyNameFitsBeforeItsNumber_data();
    void everyNameFitsBeforeItsNumber();
    void everyDefaultIsWithinItsRange_data();
    void everyDefaultIsWithinItsRange();
    void everyFixtureFitsOnASmallScreen_data();
    void everyFixtureFitsOnASmallScreen();

private:
    void addConfigurations() const;
    QVariantList placements(const QString& configuration) const;
    /// Makes the fixtures of a configuration; the result is what is printed meanwhile.
    QByteArray make(const QString& configuration);

    QVariantMap profileTable_;
    Configurations configurations_;
    std::unique_ptr<TestRig> rig_;
};

void tst_ShippedTables::initTestCase() {
    const auto profiles = table("profiles");
    const auto configurations = table("configurations");
    QVERIFY(profiles && configurations);
    profileTable_ = *profiles;
    configurations_ = Configurations(configurations);
    QVERIFY(!profileTable_.isEmpty());
    QVERIFY(!configurations_.names().isEmpty());
}

void tst_ShippedTables::init() {
    rig_ = std::make_unique<TestRig>();
    rig_->profiles().setTable(profileTable_);
}

void tst_ShippedTables::addConfigurations() const {
    QTest::addColumn<QString>("configuration");
    for (const QString& name : configurations_.names()) {
        QTest::newRow(qPrintable(name)) << name;
    }
}

QVariantList tst_ShippedTables::placements(const QString& configuration) const {
    return configurations_.configuration(configuration)->value("views").toList();
}

QByteArray tst_ShippedTables::make(const QString& configuration) {
    return standardOutputOf([&] { rig_->fixtures().replaceAll(placements(configuration)); });
}

void tst_ShippedTables::theFirstStartFindsItsConfiguration() {
    QVERIFY(configurations_.names().contains(configurations_.defaultName()));
}

void tst_ShippedTables::everyProfileHoldsOnlyWhatIsReadOfIt_data() {
    QTest::addColumn<QString>("profile");
    for (const QString& name : profileTable_.keys()) {
        QTest::newRow(qPrintable(name)) << name;
    }
}

void tst_ShippedTables::everyProfileHoldsOnlyWhatIsReadOfIt() {
    QFETCH(const QString, profile);
    const QMap<QString, int> types{{"profile", QMetaType::QString},  {"name", QMetaType::QString},
                                   {"label", QMetaType::QString},    {"channels", QMetaType::LongLong},
                                   {"default", QMetaType::LongLong}, {"blank", QMetaType::LongLong},
                                   {"header", QMetaType::Bool},      {"newlayer", QMetaType::Bool}};
    const QVariantList entries = profileTable_.value(profile).toList();
    QVERIFY(!entries.isEmpty());
    for (const QVariant& entry : entries) {
        QCOMPARE(entry.typeId(), QMetaType::QVariantMap);
        const QVariantMap map = entry.toMap();
        for (auto item = map.begin(); item != map.end(); ++item) {
            QVERIFY2(types.contains(item.key()), qPrintable(item.key()));
            QCOMPARE(item.value().typeId(), types.value(item.key()));
        }
        QVERIFY(!map.contains("profile") || profileTable_.contains(map.value("profile").toString()));
    }
}

void tst_ShippedTables::everyProfileIsUsed() {
    QSet<QString> used;
    const auto use = [&](const QVariantList& entries) {
        for (const QVariant& entry : entries) {
            used.insert(entry.toMap().value("profile").toString());
        }
    };
    for (const QVariant& entries : std::as_const(profileTable_)) {
        use(entries.toList());
    }
    for (const QString& name : configurations_.names()) {
        for (const QVariant& placement : placements(name)) {
            use(placement.toMap().value("profiles").toList());
        }
    }
    for (const QString& profile : profileTable_.keys()) {
        QVERIFY2(used.contains(profile), qPrintable(profile));
    }
}

void tst_ShippedTables::everyPlacementIsComplete_data() {
    addConfigurations();
}

void tst_ShippedTables::everyPlacementIsComplete() {
    QFETCH(const QString, configuration);
    QVERIFY(!placements(configuration).isEmpty());
    QSet<QString> names;
    for (const QVariant& value : placements(configuration)) {
        const QVariantMap placement = value.toMap();
        QCOMPARE(placement.keys(), QStringList({"address", "layer", "name", "profiles", "universe"}));
        QCOMPARE(placement.value("name").typeId(), QMetaType::QString);
        for (const char* number : {"address", "layer", "universe"}) {
            QCOMPARE(placement.value(number).typeId(), QMetaType::LongLong);
        }
        const qlonglong address = placement.value("address").toLongLong();
        const qlonglong universe = placement.value("universe").toLongLong();
        QVERIFY(address >= 1 && address <= 512);
        QVERIFY(universe >= 0 && universe <= 255);
        names.insert(placement.value("name").toString());
    }
    QCOMPARE(names.size(), placements(configuration).size());
}

void tst_ShippedTables::everyFixtureUnfoldsWithoutAWord_data() {
    addConfigurations();
}

void tst_ShippedTables::everyFixtureUnfoldsWithoutAWord() {
    QFETCH(const QString, configuration);
    QCOMPARE(make(configuration), "");
    for (const auto& fixture : rig_->fixtures().rows()) {
        QVERIFY2(!fixture->controls().empty(), qPrintable(fixture->name()));
    }
}

void tst_ShippedTables::everyControlHasAKeyOfItsOwn_data() {
    addConfigurations();
}

void tst_ShippedTables::everyControlHasAKeyOfItsOwn() {
    QFETCH(const QString, configuration);
    make(configuration);
    std::size_t controls = 0;
    for (const auto& fixture : rig_->fixtures().rows()) {
        for (const auto& control : fixture->controls()) {
            controls += control->dummy() ? 0 : 1;
            QVERIFY(control->dummy() || !control->name().isEmpty());
        }
    }
    QCOMPARE(rig_->faders().count(), controls);
}

void tst_ShippedTables::noSlotIsDrivenTwiceOrLiesOutside_data() {
    addConfigurations();
}

void tst_ShippedTables::noSlotIsDrivenTwiceOrLiesOutside() {
    QFETCH(const QString, configuration);
    make(configuration);
    QSet<std::pair<quint32, quint32>> driven;
    for (const auto& fixture : rig_->fixtures().rows()) {
        for (const auto& control : fixture->controls()) {
            for (quint32 slot = control->address(); slot < control->address() + control->channels(); ++slot) {
                QVERIFY2(slot < 512, qPrintable(fixture->name() + "." + control->name()));
                const auto place = std::pair(fixture->universe(), slot);
                QVERIFY2(!driven.contains(place), qPrintable(fixture->name() + "." + control->name()));
                driven.insert(place);
            }
        }
    }
}

void tst_ShippedTables::everyNameFitsBeforeItsNumber_data() {
    addConfigurations();
}

void tst_ShippedTables::everyNameFitsBeforeItsNumber() {
    QFETCH(const QString, configuration);
    make(configuration);
    for (const auto& fixture : rig_->fixtures().rows()) {
        for (const auto& control : fixture->controls()) {
            const QString name = control->name();
            QVERIFY2(name.size() <= 13 && isAscii(name) && !name.contains('#'), qPrintable(name));
        }
    }
}

void tst_ShippedTables::everyDefaultIsWithinItsRange_data() {
    addConfigurations();
}

void tst_ShippedTables::everyDefaultIsWithinItsRange() {
    QFETCH(const QString, configuration);
    make(configuration);
    for (const DMXControl* const control : rig_->faders().sorted()) {
        QVERIFY2(control->value() <= control->max(), qPrintable(control->key()));
    }
}

void tst_ShippedTables::everyFixtureFitsOnASmallScreen_data() {
    addConfigurations();
}

void tst_ShippedTables::everyFixtureFitsOnASmallScreen() {
    QFETCH(const QString, configuration);
    make(configuration);
    for (const auto& fixture : rig_->fixtures().rows()) {
        QVERIFY2(fixture->size().boundedTo(smallScreen) == fixture->size(), qPrintable(fixture->name()));
    }
}

QTEST_GUILESS_MAIN(tst_ShippedTables)
#include "tst_ShippedTables.moc"
