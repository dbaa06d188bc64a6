#include "library/ExpandedMode.h"
#include "library/FixtureImport.h"

#include <QTemporaryFile>
#include <QTest>

namespace {

// The files stand beside this one.
QString fileNamed(const QString& name) {
    return QFINDTESTDATA(name);
}

} // namespace

class tst_FixtureImport : public QObject {
    Q_OBJECT

private slots:
    void aModeBecomesTheFadersOfItsSlots_data();
    void aModeBecomesTheFadersOfItsSlots();
    void everyModeIsAProfileNamedAfterMakerModelAndMode();
    void equalHeadsShareOneNestedProfile();
    void whatAFaderCannotExpressIsARemark_data();
    void whatAFaderCannotExpressIsARemark();
    void aBadFileIsRefusedWholeWithItsNameAndTheReason_data();
    void aBadFileIsRefusedWholeWithItsNameAndTheReason();
    void aFileThatIsNotThereIsRefused();
    void aFileThatUnfoldsBeyondAllBoundsIsRefused_data();
    void aFileThatUnfoldsBeyondAllBoundsIsRefused();
    void theMakerOfAFolderStandsInTheListOfMakers();
};

void tst_FixtureImport::aModeBecomesTheFadersOfItsSlots_data() {
    QTest::addColumn<QString>("file");
    QTest::addColumn<int>("channels");
    QTest::addColumn<QStringList>("expected");

    QTest::newRow("defaults") << "qxf/defaults.qxf" << 2 << QStringList{"Dimmer 1 = 0", "Shutter 2 = 255"};
    QTest::newRow("a fine channel behind its coarse one")
        << "qxf/sixteen-bit.qxf" << 5
        << QStringList{"Pan 1-2 = 32769", "Tilt movement 3-4 = 0", "Dimmer 5 = 0"};
    QTest::newRow("a fine channel known by its name")
        << "qxf/fine-by-its-name.qxf" << 4
        << QStringList{"Zoom (MSB) 1-2 = 772", "Gobo 1 3 = 0", "Gobo 2 fine 4 = 0"};
    QTest::newRow("fine channels elsewhere")
        << "qxf/fine-elsewhere.qxf" << 4
        << QStringList{"Pan 1 = 128", "Tilt 2 = 128", "Pan Fine 3 = 7", "Tilt Fine 4 = 0"};
    QTest::newRow("a fine channel of something else")
        << "qxf/fine-of-another-colour.qxf" << 2 << QStringList{"Green 1 = 0", "Blue 2 = 0"};
    QTest::newRow("unused slots, named and left out")
        << "qxf/unused-slots.qxf" << 7
        << QStringList{"Dimmer 1 = 0", "blank 2-3", "Strobe 4 = 0", "blank 5-6", "Strobe 2 7 = 0"};
    QTest::newRow("an unused slot that has to rest at a level")
        << "qxf/unused-with-a-level.qxf" << 2 << QStringList{"Dimmer 1 = 0", "Keep at 10 2 = 10"};
    QTest::newRow("pixels") << "qxf/pixels.qxf" << 11
                            << QStringList{"Dimmer 1 = 0",       "label Head 1",       "Head 1.Red 2 = 0",
                                           "Head 1.Green 3 = 0", "Head 1.Blue 4 = 0",  "label Head 2",
                                           "Head 2.Red 5 = 0",   "Head 2.Green 6 = 0", "Head 2.Blue 7 = 0",
                                           "label Head 3",       "Head 3.Red 8 = 0",   "Head 3.Green 9 = 0",
                                           "Head 3.Blue 10 = 0", "Strobe 11 = 0"};
    QTest::newRow("heads with gaps") << "qxf/heads-with-gaps.qxf" << 6
                                     << QStringList{"Red 1 1 = 0",   "Red 2 2 = 0",  "Green 1 3 = 0",
                                                    "Green 2 4 = 0", "Blue 1 5 = 0", "Blue 2 6 = 0"};
    QTest::newRow("heads of two kinds, and one alone")
        << "qxf/two-kinds-of-heads.qxf" << 7
        << QStringList{"label Head 1", "Head 1.Red 1 = 0", "Head 1.Green 2 = 0",
                       "label Head 2", "Head 2.Red 3 = 0", "Head 2.Green 4 = 0",
                       "Spot 1 5 = 0", "Spot 2 6 = 0",     "Laser 7 = 0"};
    QTest::newRow("heads of a 16-bit fader")
        << "qxf/heads-of-16-bits.qxf" << 4
        << QStringList{"Head 1.Pan (Head) 1 1-2 = 32768", "Head 2.Pan (Head) 2 3-4 = 32768"};
    QTest::newRow("heads that differ in a default")
        << "qxf/heads-that-differ.qxf" << 2 << QStringList{"Red 1 1 = 0", "Red 2 2 = 9"};
    QTest::newRow("names that would meet")
        << "qxf/names-that-meet.qxf" << 4
        << QStringList{"Red 1 1 = 0", "Red 1 2 2 = 0", "Gobo No 3 = 0", "Head 1,Red 4 = 0"};

    QTest::newRow("JSON: defaults") << "ofl/defaults.json" << 3
                                    << QStringList{"Dimmer 1 = 0", "Shutter 2 = 255", "Zoom angle 3 = 128"};
    QTest::newRow("JSON: fine channels behind their coarse ones")
        << "ofl/sixteen-bit.json" << 6
        << QStringList{"Pan 1-2 = 32769", "Tilt 3-4 = 32768", "Zoom 5-6 = 32768"};
    QTest::newRow("JSON: fine channels elsewhere")
        << "ofl/fine-elsewhere.json" << 4
        << QStringList{"Pan 1 = 128", "Tilt 2 = 0", "Pan fine 3 = 1", "Tilt fine 4 = 0"};
    QTest::newRow("JSON: the third byte is a fader of its own")
        << "ofl/twenty-four-bits.json" << 3 << QStringList{"Pan 1-2 = 258", "Pan finest 3 = 3"};
    QTest::newRow("JSON: unused slots")
        << "ofl/unused-slots.json" << 5
        << QStringList{"Dimmer 1 = 0", "blank 2-3", "Strobe 4 = 0", "blank 5"};
    QTest::newRow("JSON: pixels") << "ofl/pixels.json" << 10
                                  << QStringList{"Dimmer 1 = 0",
                                                 "label Head 1",
                                                 "Head 1.Red 2 = 0",
                                                 "Head 1.Blue 3-4 = 65535",
                                                 "label Head 2",
                                                 "Head 2.Red 5 = 0",
                                                 "Head 2.Blue 6-7 = 65535",
                                                 "label Head 3",
                                                 "Head 3.Red 8 = 0",
                                                 "Head 3.Blue 9-10 = 65535"};
    QTest::newRow("JSON: pixels a channel at a time")
        << "ofl/pixels-per-channel.json" << 6
        << QStringList{"Red 1 1 = 0", "Red 2 2 = 0", "blank 3-4", "Blue 1 5 = 255", "Blue 2 6 = 255"};
    QTest::newRow("JSON: pixels with names, by the alphabet")
        << "ofl/pixels-by-name.json" << 2 << QStringList{"Red Left 1 = 0", "Red Right 2 = 0"};
    QTest::newRow("JSON: groups in the order of the file")
        << "ofl/pixel-groups.json" << 3
        << QStringList{"Red Outer 1 = 0", "Red Inner \"b\" 2 = 0", "Red All 3 = 0"};
    QTest::newRow("JSON: channels of pixels by their names")
        << "ofl/channels-of-pixels-named.json" << 3
        << QStringList{"Head 1.Red 1 1 = 0", "Dimmer 2 = 0", "Head 2.Red 2 3 = 0"};
    QTest::newRow("JSON: names that would meet")
        << "ofl/names-that-meet.json" << 4
        << QStringList{"Red 1 1 = 0", "Red 1 2 2 = 0", "Channel 3 = 0", "Red 1 3 4 = 0"};
}

void tst_FixtureImport::aModeBecomesTheFadersOfItsSlots() {
    QFETCH(const QString, file);
    QFETCH(const int, channels);
    QFETCH(const QStringList, expected);

    const FixtureImport fixture = importFixture(fileNamed(file));
    QCOMPARE(fixture.refusal, QString());
    QCOMPARE(fixture.modes.front().channels, channels);
    QCOMPARE(fixture.modes.front().remarks, QStringList());
    QCOMPARE(expanded(fixture.modes.front()).lines, expected);
}

void tst_FixtureImport::everyModeIsAProfileNamedAfterMakerModelAndMode() {
    const FixtureImport fixture = importFixture(fileNamed("qxf/defaults.qxf"));
    QCOMPARE(fixture.maker, QString("Acme"));
    QCOMPARE(fixture.model, QString("Lamp"));
    QCOMPARE(fixture.modes.size(), std::size_t{2});
    QCOMPARE(fixture.modes[0].profileName, QString("Acme Lamp - 2 Channel"));
    QCOMPARE(fixture.modes[0].mode, QString("2 Channel"));
    QCOMPARE(fixture.modes[1].profileName, QString("Acme Lamp - 1 Channel"));
    const QVariantList faders{QVariantMap{{"name", "Shutter"}, {"default", 255}}};
    QCOMPARE(fixture.modes[1].profiles, (QVariantMap{{"Acme Lamp - 1 Channel", faders}}));
}

void tst_FixtureImport::equalHeadsShareOneNestedProfile() {
    const FixtureImport fixture = importFixture(fileNamed("qxf/two-kinds-of-heads.qxf"));
    QCOMPARE(fixture.modes.front().profiles.keys(), (QStringList{"Acme Lamp - M", "Acme Lamp - M, Head"}));
}

void tst_FixtureImport::whatAFaderCannotExpressIsARemark_data() {
    QTest::addColumn<QString>("file");
    QTest::addColumn<QStringList>("remarks");

    QTest::newRow("a name that changes") << "qxf/meaning-that-changes.qxf"
                                         << QStringList{"'Speed' is 'Sensitivity' at some levels of another "
                                                        "channel; its fader is called 'Speed' all the "
                                                        "time"};
    QTest::newRow("JSON: a name that changes")
        << "ofl/meaning-that-changes.json"
        << QStringList{"'Speed or level' is 'Speed' or 'Level', as the level of 'Mode' has it; its fader is "
                       "called 'Speed "
                       "or level' all the time and rests at 0"};
}

void tst_FixtureImport::whatAFaderCannotExpressIsARemark() {
    QFETCH(const QString, file);
    QFETCH(const QStringList, remarks);

    const FixtureImport fixture = importFixture(fileNamed(file));
    QCOMPARE(fixture.modes.size(), std::size_t{2});
    QCOMPARE(fixture.modes[0].remarks, remarks);
    QCOMPARE(fixture.modes[0].channels, 2);
    QCOMPARE(fixture.modes[1].remarks, QStringList());
}

void tst_FixtureImport::aBadFileIsRefusedWholeWithItsNameAndTheReason_data() {
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("reason");

    const auto qxf = [](const char* name, const char* reason) {
        QTest::newRow(name) << QString("qxf/refused-%1.qxf").arg(name) << QString(reason);
    };
    qxf("channel-that-is-not-there", "mode 'M': there is no channel 'Strobe'");
    qxf("two-channels-in-a-slot", "mode 'M': two channels at slot 1");
    qxf("head-outside", "mode 'M': a head with a channel that the mode does not have");
    qxf("default", "line 7: a default that is no number from 0 to 255");
    qxf("slot-number", "line 9: a slot that is no number from 0 to 4095");
    qxf("no-modes", "it has no mode");
    qxf("empty-mode", "mode 'M' has no channel");
    qxf("no-model", "it names no model");
    qxf("nameless-mode", "a mode without a name");
    qxf("cut-off", "line 8: Premature end of document.");
    qxf("other-xml", "line 2: it is no fixture definition");
    qxf("entities", "line 5: it declares entities, which no fixture needs");
    qxf("long-name", "line 4: a text of more than 200 characters");

    const auto ofl = [](const char* name, const char* reason) {
        QTest::addRow("JSON: %s", name) << QString("ofl/refused-%1.json").arg(name) << QString(reason);
    };
    ofl("channel-that-is-not-there", "mode 'M': there is no channel 'Strobe'");
    ofl("default", "channel 'Dimmer': its default is no level that it has");
    ofl("percentage", "channel 'Dimmer': its default is no level that it has");
    ofl("resolution", "channel 'Dimmer': its default is no level that it has");
    ofl("block", "mode 'M': there is no block 'matrix'");
    ofl("pixels", "its matrix does not have 1 to 4096 pixels");
    ofl("no-pixel", "mode 'M': it repeats channels for no pixel");
    ofl("no-modes", "it has no mode");
    ofl("empty-mode", "mode 'M' has no channel");
    ofl("number-for-a-channel", "mode 'M': a channel that is no text");
    ofl("no-name", "it has no name, or one of more than 200 characters");
    ofl("cut-off", "at byte 201: unterminated string");
    ofl("pointer", "it only points to the fixture 'acme/new-lamp'");
    ofl("other-json", "it is no fixture of the Open Fixture Library");
}

void tst_FixtureImport::aBadFileIsRefusedWholeWithItsNameAndTheReason() {
    QFETCH(const QString, file);
    QFETCH(const QString, reason);

    const QString path = fileNamed(file);
    const FixtureImport fixture = importFixture(path);
    QCOMPARE(fixture.refusal, path + ": " + reason);
    QVERIFY(fixture.modes.empty());
}

void tst_FixtureImport::aFileThatIsNotThereIsRefused() {
    QCOMPARE(importFixture("/dev/null/lamp.qxf").refusal,
             QString("/dev/null/lamp.qxf: it cannot be read, or is larger than 4 MiB"));
    QCOMPARE(importFixture("/dev/zero").refusal,
             QString("/dev/zero: it cannot be read, or is larger than 4 MiB"));
}

void tst_FixtureImport::aFileThatUnfoldsBeyondAllBoundsIsRefused_data() {
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QString>("reason");

    // %1 are the template channels, %2 the modes.
    const QString fixture = R"({"name": "L", "matrix": {"pixelCount": [4096, 1, 1]},
                                "templateChannels": {%1}, "modes": [%2]})";
    const auto times = [](int count, const QString& text) {
        QStringList texts;
        for (int i = 0; i < count; ++i) {
            texts.append(QString(text).replace('@', QString::number(i)));
        }
        return texts.join(',');
    };
    const QString block =
        R"({"insert": "matrixChannels", "repeatFor": "eachPixelABC", "channelOrder": "perPixel",
                              "templateChannels": ["a0 $pixelKey"]})";
    const QString mode = R"({"name": "M@", "channels": [)" + block + "]}";
    const QString twice = R"({"name": "M", "channels": [)" + block + "," + block + "]}";
    const QString switching = R"({"switchChannels": {"s@ $pixelKey": "a0 $pixelKey"}})";
    const QString channel = R"("a@ $pixelKey": {})";
    const QString switcher = R"("a0 $pixelKey": {"capabilities": [%1]})";

    QTest::newRow("channels") << fixture.arg(times(17, channel), times(1, mode)).toUtf8()
                              << "channel 'a9 $pixelKey': there are more than 65536 channels";
    QTest::newRow("slots of a mode") << fixture.arg(times(1, channel), twice).toUtf8()
                                     << "mode 'M': it has more than 4096 slots";
    QTest::newRow("slots of all modes")
        << fixture.arg(times(1, channel), times(17, mode)).toUtf8() << "its modes have more than 65536 slots";
    QTest::newRow("modes") << R"({"name": "L", "availableChannels": {"a": {}}, "modes": [)" +
                                  times(257, R"({"name": "M@", "channels": ["a"]})").toUtf8() + "]}"
                           << "it has more than 256 modes";
    QTest::newRow("switches") << fixture.arg(switcher.arg(times(20'000, switching)), times(1, mode)).toUtf8()
                              << "channel 'a0 $pixelKey': there are more than 4096 switches";
    QTest::newRow("nesting") << R"({"name": "L", "modes": )" + QByteArray(100'000, '[')
                             << "at byte 1047: too deeply nested document";
}

void tst_FixtureImport::aFileThatUnfoldsBeyondAllBoundsIsRefused() {
    QFETCH(const QByteArray, json);
    QFETCH(const QString, reason);

    QTemporaryFile file;
    QVERIFY(file.open() && file.write(json) == json.size() && file.flush());
    QCOMPARE(importFixture(file.fileName()).refusal, file.fileName() + ": " + reason);
}

void tst_FixtureImport::theMakerOfAFolderStandsInTheListOfMakers() {
    const FixtureImport fixture = importFixture(fileNamed("makers/acme/lamp.json"));
    QCOMPARE(fixture.maker, QString("Acme Lighting"));
    QCOMPARE(fixture.modes.front().profileName, QString("Acme Lighting Lamp - M"));
    QCOMPARE(importFixture(fileNamed("makers/unknown/lamp.json")).modes.front().profileName,
             QString("Lamp - M"));
}

QTEST_APPLESS_MAIN(tst_FixtureImport)
#include "tst_FixtureImport.moc"
