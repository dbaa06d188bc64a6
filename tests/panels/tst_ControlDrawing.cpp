#include "panels/ControlDrawing.h"

#include "panels/Colours.h"
#include "panels/MacRoman.h"
#include "panels/TextPictures.h"

#include <QImage>
#include <QPainter>
#include <QTest>

#include <utility>

namespace {

constexpr QSize frame(150, 19); // a row of a fixture's column

// As the eye gets them, eight bits a colour.
constexpr QRgb untouched = qRgb(255, 0, 255);
constexpr QRgb midGrey = qRgb(128, 128, 128);
constexpr QRgb midRed = qRgb(89, 64, 64);
constexpr QRgb darkGrey = qRgb(77, 77, 77);
constexpr QRgb darkRed = qRgb(64, 38, 38);
constexpr QRgb orange = qRgb(255, 128, 0);
constexpr QRgb black = qRgb(0, 0, 0);
constexpr QRgb white = qRgb(255, 255, 255);

QImage drawn(const ControlLook& look, QSize size = frame) {
    QImage image(size, QImage::Format_RGB32);
    image.fill(untouched);
    QPainter painter(&image);
    drawControl(painter, QRect(QPoint(0, 0), size), look);
    return image;
}

// The first and the last column of a row that show the colour; -1 and -1 when none does.
std::pair<int, int> columnsOf(QRgb colour, const QImage& image, int row) {
    std::pair<int, int> columns(-1, -1);
    for (int x = 0; x < image.width(); ++x) {
        if (image.pixel(x, row) == colour) {
            columns = {columns.first < 0 ? x : columns.first, x};
        }
    }
    return columns;
}

// Where the picture of a label is not black: its text.
QRect textOf(const QImage& label) {
    QRect text;
    for (int y = 0; y < label.height(); ++y) {
        for (int x = 0; x < label.width(); ++x) {
            if (label.pixel(x, y) != black) {
                text |= QRect(x, y, 1, 1);
            }
        }
    }
    return text;
}

int pixelsThatDiffer(const QImage& one, const QImage& other, const QRect& area) {
    int count = 0;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            count += one.pixel(x, y) != other.pixel(x, y) ? 1 : 0;
        }
    }
    return count;
}

} // namespace

class tst_ControlDrawing : public QObject {
    Q_OBJECT

private slots:
    void theColoursAreThese_data();
    void theColoursAreThese();
    void theBarIsProportionalToTheLevel_data();
    void theBarIsProportionalToTheLevel();
    void theBarFillsTheFrameButForTwoPixels_data();
    void theBarFillsTheFrameButForTwoPixels();
    void theFrameAroundTheBarIsLeftAsItIs();
    void theOutlineIsOnePixelAroundTheWholeFrame();
    void withoutTheOutlineTheEdgeIsLeftAsItIs();
    void aLabelIsItsNameOnBlack();
    void aLabelHasNeitherBarNorNumberNorOutline();
    void theNameStandsOnTheBaselineAtTheLeft();
    void theNumberStandsInTheRightMost45Pixels_data();
    void theNumberStandsInTheRightMost45Pixels();
    void aNameOf13CharactersEndsBeforeTheNumber();
    void theValueIsAlwaysFiveCharacters_data();
    void theValueIsAlwaysFiveCharacters();
    void aNameIsCutToItsCharacterCountInBytes_data();
    void aNameIsCutToItsCharacterCountInBytes();
    void aNameOfAnyLengthIsDrawn();
    void macRomanIsTheCharacterSetOfThatName();
    void aFrameOfAnySizeIsDrawn_data();
    void aFrameOfAnySizeIsDrawn();
    void aControlLooksTheSameAtEveryPlace();
    void aLongNameStaysInsideItsFrame();
    void textIsDrawnInTheScreensOwnPixels_data();
    void textIsDrawnInTheScreensOwnPixels();
    void moreTextsThanAreKeptAreDrawnLikeTheFirst();
};

void tst_ControlDrawing::theColoursAreThese_data() {
    QTest::addColumn<QColor>("colour");
    QTest::addColumn<double>("red");
    QTest::addColumn<double>("green");
    QTest::addColumn<double>("blue");

    QTest::newRow("gLabelColour") << gLabelColour << 0.0 << 0.0 << 0.0;
    QTest::newRow("gBackgroundColour") << gBackgroundColour << 0.15 << 0.15 << 0.15;
    QTest::newRow("gDarkGrey") << gDarkGrey << 0.3 << 0.3 << 0.3;
    QTest::newRow("gDarkRed") << gDarkRed << 0.25 << 0.15 << 0.15;
    QTest::newRow("gMidGrey") << gMidGrey << 0.5 << 0.5 << 0.5;
    QTest::newRow("gMidRed") << gMidRed << 0.35 << 0.25 << 0.25;
    QTest::newRow("gHighlight") << gHighlight << 1.0 << 0.5 << 0.0;
    QTest::newRow("gTextColor") << gTextColor << 1.0 << 1.0 << 1.0;
}

void tst_ControlDrawing::theColoursAreThese() {
    QFETCH(const QColor, colour);
    QFETCH(const double, red);
    QFETCH(const double, green);
    QFETCH(const double, blue);
    constexpr double sixteenBits = 1.0 / 65535;
    QVERIFY(qAbs(colour.redF() - red) < sixteenBits);
    QVERIFY(qAbs(colour.greenF() - green) < sixteenBits);
    QVERIFY(qAbs(colour.blueF() - blue) < sixteenBits);
    QCOMPARE(colour.alpha(), 255);
}

void tst_ControlDrawing::theBarIsProportionalToTheLevel_data() {
    QTest::addColumn<quint32>("value");
    QTest::addColumn<quint32>("max");
    QTest::addColumn<double>("width");

    QTest::newRow("0") << 0U << 255U << 0.0;
    QTest::newRow("1 of 255") << 1U << 255U << 0.57254901960784;
    QTest::newRow("51 of 255") << 51U << 255U << 29.2;
    QTest::newRow("128 of 255") << 128U << 255U << 73.28627450980392;
    QTest::newRow("254 of 255") << 254U << 255U << 145.42745098039216;
    QTest::newRow("255 of 255") << 255U << 255U << 146.0;
    QTest::newRow("13107 of 65535") << 13107U << 65535U << 29.2;
    QTest::newRow("65535 of 65535") << 65535U << 65535U << 146.0;
    QTest::newRow("beyond the maximum") << 300U << 255U << 146.0;
    QTest::newRow("far beyond the maximum") << 4294967295U << 255U << 146.0;
}

void tst_ControlDrawing::theBarIsProportionalToTheLevel() {
    QFETCH(const quint32, value);
    QFETCH(const quint32, max);
    QFETCH(const double, width);
    const BarGeometry bar = barGeometry(frame, value, max);
    QCOMPARE(bar.level, QRectF(2, 2, width, 15));
    QCOMPARE(bar.rest, QRectF(2 + width, 2, 146 - width, 15));
}

void tst_ControlDrawing::theBarFillsTheFrameButForTwoPixels_data() {
    QTest::addColumn<quint32>("value");
    QTest::addColumn<bool>("timed");
    QTest::addColumn<QRgb>("middle");
    QTest::addColumn<QRgb>("dark");
    QTest::addColumn<int>("middleEnd"); // the first column that is dark

    QTest::newRow("at 0") << 0U << false << midGrey << darkGrey << 2;
    QTest::newRow("at 51") << 51U << false << midGrey << darkGrey << 31;
    QTest::newRow("at 128") << 128U << false << midGrey << darkGrey << 75;
    QTest::newRow("at the maximum") << 255U << false << midGrey << darkGrey << 148;
    QTest::newRow("beyond the maximum") << 300U << false << midGrey << darkGrey << 148;
    QTest::newRow("with a fade time, at 0") << 0U << true << midRed << darkRed << 2;
    QTest::newRow("with a fade time, at 128") << 128U << true << midRed << darkRed << 75;
    QTest::newRow("with a fade time, at the maximum") << 255U << true << midRed << darkRed << 148;
}

void tst_ControlDrawing::theBarFillsTheFrameButForTwoPixels() {
    QFETCH(const quint32, value);
    QFETCH(const bool, timed);
    QFETCH(const QRgb, middle);
    QFETCH(const QRgb, dark);
    QFETCH(const int, middleEnd);
    const QImage image = drawn({.name = {}, .value = value, .timed = timed});
    for (const int row : {2, 16}) { // above and below the number
        for (int x = 2; x < 148; ++x) {
            QCOMPARE(image.pixel(x, row), x < middleEnd ? middle : dark);
        }
    }
}

void tst_ControlDrawing::theFrameAroundTheBarIsLeftAsItIs() {
    const QImage image = drawn({.name = {}, .value = 128});
    for (const int row : {0, 1, 17, 18}) {
        QCOMPARE(columnsOf(untouched, image, row), std::pair(0, 149));
        QCOMPARE(columnsOf(midGrey, image, row), std::pair(-1, -1));
    }
    for (const int column : {0, 1, 148, 149}) {
        QCOMPARE(image.pixel(column, 9), untouched);
    }
}

void tst_ControlDrawing::theOutlineIsOnePixelAroundTheWholeFrame() {
    const QImage image = drawn({.name = {}, .value = 128, .outlined = true});
    for (int x = 0; x < 150; ++x) {
        QCOMPARE(image.pixel(x, 0), orange);
        QCOMPARE(image.pixel(x, 18), orange);
    }
    for (int y = 0; y < 19; ++y) {
        QCOMPARE(image.pixel(0, y), orange);
        QCOMPARE(image.pixel(149, y), orange);
    }
    for (int x = 1; x < 149; ++x) {
        QCOMPARE(image.pixel(x, 1), untouched);
        QCOMPARE(image.pixel(x, 17), untouched);
    }
    QCOMPARE(image.pixel(1, 9), untouched);
    QCOMPARE(image.pixel(148, 9), untouched);
}

void tst_ControlDrawing::withoutTheOutlineTheEdgeIsLeftAsItIs() {
    const QImage image = drawn({.name = "Pan", .value = 255, .timed = true});
    for (int x = 0; x < 150; ++x) {
        QCOMPARE(image.pixel(x, 0), untouched);
        QCOMPARE(image.pixel(x, 18), untouched);
    }
}

void tst_ControlDrawing::aLabelIsItsNameOnBlack() {
    const QImage empty = drawn({.name = {}, .dummy = true});
    QVERIFY(textOf(empty).isNull());
    const QImage label = drawn({.name = "Pan", .dummy = true});
    QVERIFY(!textOf(label).isNull());
    QVERIFY(textOf(label).right() < 10 + 45);
}

void tst_ControlDrawing::aLabelHasNeitherBarNorNumberNorOutline() {
    const QImage plain = drawn({.name = "Pan", .dummy = true});
    const QImage other =
        drawn({.name = "Pan", .value = 200, .channels = 2, .timed = true, .dummy = true, .outlined = true});
    QCOMPARE(other, plain);
}

void tst_ControlDrawing::theNameStandsOnTheBaselineAtTheLeft() {
    const QImage label = drawn({.name = "HHH", .dummy = true});
    const QRect text = textOf(label);
    QCOMPARE(text.bottom(), 13); // the baseline is 5 above the lower edge, below row 13
    QVERIFY(text.left() >= 10 && text.left() <= 12);
    QVERIFY(text.height() >= 7 && text.height() <= 10);
    QVERIFY(columnsOf(white, label, 11).first >= 0);
}

void tst_ControlDrawing::theNumberStandsInTheRightMost45Pixels_data() {
    QTest::addColumn<quint32>("value");
    QTest::addColumn<quint32>("channels");
    QTest::addColumn<int>("firstColumn");

    QTest::newRow("16 bit") << 10000U << 2U << 105;
    QTest::newRow("8 bit, behind two blanks") << 188U << 1U << 105 + 2 * 7;
}

void tst_ControlDrawing::theNumberStandsInTheRightMost45Pixels() {
    QFETCH(const quint32, value);
    QFETCH(const quint32, channels);
    QFETCH(const int, firstColumn);
    const ControlLook look{.name = {}, .value = value, .max = UINT32_MAX, .channels = channels};
    const QImage image = drawn(look);
    QImage bar = image.copy();
    bar.fill(untouched);
    QPainter(&bar).fillRect(QRect(2, 2, 146, 15), QColor(darkGrey));
    QCOMPARE(pixelsThatDiffer(image, bar, QRect(0, 0, firstColumn, 19)), 0);
    QVERIFY(pixelsThatDiffer(image, bar, QRect(firstColumn, 2, 9, 15)) > 0);
    QCOMPARE(pixelsThatDiffer(image, bar, QRect(148, 0, 2, 19)), 0);
    QCOMPARE(pixelsThatDiffer(image, bar, QRect(0, 15, 150, 4)), 0);
}

void tst_ControlDrawing::aNameOf13CharactersEndsBeforeTheNumber() {
    QVERIFY(textOf(drawn({.name = "WWWWWWWWWWWWW", .dummy = true})).right() < 105);
}

void tst_ControlDrawing::theValueIsAlwaysFiveCharacters_data() {
    QTest::addColumn<quint32>("value");
    QTest::addColumn<quint32>("channels");
    QTest::addColumn<QString>("text");

    QTest::newRow("8 bit, 7") << 7U << 1U << "  007";
    QTest::newRow("8 bit, 0") << 0U << 1U << "  000";
    QTest::newRow("8 bit, 255") << 255U << 1U << "  255";
    QTest::newRow("8 bit, four digits are cut") << 1234U << 1U << "  123";
    QTest::newRow("8 bit, highest") << 4294967295U << 1U << "  -01";
    QTest::newRow("16 bit, 7") << 7U << 2U << "00007";
    QTest::newRow("16 bit, 65535") << 65535U << 2U << "65535";
    QTest::newRow("16 bit, six digits are cut") << 123456U << 2U << "12345";
    QTest::newRow("16 bit, highest") << 4294967295U << 2U << "-0001";
    QTest::newRow("16 bit, lowest number") << 2147483648U << 2U << "-2147";
    QTest::newRow("three channels") << 7U << 3U << "  007";
    QTest::newRow("no channels") << 7U << 0U << "  007";
}

void tst_ControlDrawing::theValueIsAlwaysFiveCharacters() {
    QFETCH(const quint32, value);
    QFETCH(const quint32, channels);
    QTEST(drawnValue(value, channels), "text");
}

void tst_ControlDrawing::aNameIsCutToItsCharacterCountInBytes_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("text");

    QTest::newRow("ASCII") << "Gobo 1"
                           << "Gobo 1";
    QTest::newRow("empty") << ""
                           << "";
    QTest::newRow("none") << QString() << "";
    // Four characters are five bytes: 47 72 C3 BC 6E. Four of them are drawn.
    QTest::newRow("one umlaut") << QString::fromUtf8("Grün") << QString::fromUtf8("Gr√º");
    // C3 84 C3 96 C3 9C, the first three.
    QTest::newRow("umlauts alone") << QString::fromUtf8("ÄÖÜ") << QString::fromUtf8("√Ñ√");
    // E2 82 AC, the first.
    QTest::newRow("three bytes in one character") << QString::fromUtf8("€") << QString::fromUtf8("‚");
    // A pair of surrogates counts as two characters: F0 9F of F0 9F 92 A1.
    QTest::newRow("beyond 16 bits") << QString::fromUtf8("\U0001F4A1") << QString::fromUtf8("\uF8FFü");
    QTest::newRow("umlaut last") << QString::fromUtf8("aü") << QString::fromUtf8("a√");
}

void tst_ControlDrawing::aNameIsCutToItsCharacterCountInBytes() {
    QFETCH(const QString, name);
    QTEST(drawnName(name), "text");
}

void tst_ControlDrawing::aNameOfAnyLengthIsDrawn() {
    const QString longName(qsizetype{1024} * 1024, 'W');
    QCOMPARE(drawnName(longName), QString(256, 'W'));
    const QImage image = drawn({.name = longName, .dummy = true});
    QCOMPARE(image, drawn({.name = QString(40, 'W'), .dummy = true}));
    QCOMPARE(drawnName(QString(100'000, QChar(0x00FC))).size(), 256);
}

void tst_ControlDrawing::macRomanIsTheCharacterSetOfThatName() {
    QByteArray bytes;
    for (int byte = 1; byte < 256; ++byte) {
        bytes.append(static_cast<char>(byte));
    }
    const QString text = decodeMacRoman(bytes);
    QCOMPARE(text.size(), 255);
    for (int byte = 1; byte < 128; ++byte) {
        QCOMPARE(text.at(byte - 1).unicode(), byte);
    }
    QCOMPARE(text.sliced(127), QString::fromUtf8("ÄÅÇÉÑÖÜáàâäãåçéèêëíìîïñóòôöõúùûü"
                                                 "†°¢£§•¶ß®©™´¨≠ÆØ∞±≤≥¥µ∂∑∏π∫ªºΩæø"
                                                 "¿¡¬√ƒ≈∆«»…\u00A0ÀÃÕŒœ–—“”‘’÷◊ÿŸ⁄€‹›ﬁﬂ"
                                                 "‡·‚„‰ÂÊÁËÈÍÎÏÌÓÔ\uF8FFÒÚÛÙıˆ˜¯˘˙˚¸˝˛ˇ"));
}

void tst_ControlDrawing::aFrameOfAnySizeIsDrawn_data() {
    QTest::addColumn<QSize>("size");
    QTest::newRow("one pixel") << QSize(1, 1);
    QTest::newRow("no inner part") << QSize(4, 4);
    QTest::newRow("less than the margins") << QSize(3, 2);
    QTest::newRow("a new control") << QSize(100, 10);
}

void tst_ControlDrawing::aFrameOfAnySizeIsDrawn() {
    QFETCH(const QSize, size);
    const BarGeometry bar = barGeometry(size, 128, 255);
    QVERIFY(bar.level.width() >= 0 && bar.level.height() >= 0);
    QVERIFY(bar.rest.width() >= 0 && bar.rest.height() >= 0);
    const QImage image = drawn({.name = {}, .value = 128, .outlined = true}, size);
    QCOMPARE(image.pixel(0, 0), orange);
    QCOMPARE(image.pixel(size.width() - 1, size.height() - 1), orange);
}

void tst_ControlDrawing::aControlLooksTheSameAtEveryPlace() {
    const ControlLook look{.name = "Pan", .value = 128, .outlined = true};
    QImage image(450, 57, QImage::Format_RGB32);
    image.fill(untouched);
    QPainter painter(&image);
    drawControl(painter, QRect(150, 19, 150, 19), look);
    QCOMPARE(image.copy(150, 19, 150, 19), drawn(look));
    QImage nothing = image;
    nothing.fill(untouched);
    painter.fillRect(150, 19, 150, 19, QColor(untouched));
    QCOMPARE(image, nothing);
}

void tst_ControlDrawing::aLongNameStaysInsideItsFrame() {
    QImage image(450, 57, QImage::Format_RGB32);
    image.fill(untouched);
    QPainter painter(&image);
    drawControl(painter, QRect(150, 19, 150, 19), {.name = QString(256, 'W'), .dummy = true});
    QVERIFY(pixelsThatDiffer(image, drawn({.name = {}, .dummy = true}, QSize(450, 57)),
                             QRect(280, 19, 20, 19)) > 0);
    painter.fillRect(150, 19, 150, 19, QColor(untouched));
    QCOMPARE(columnsOf(untouched, image, 28), std::pair(0, 449));
    QCOMPARE(columnsOf(white, image, 28), std::pair(-1, -1));
}

void tst_ControlDrawing::textIsDrawnInTheScreensOwnPixels_data() {
    QTest::addColumn<double>("ratio");
    QTest::addColumn<int>("bottom"); // the last row of letters without descenders
    QTest::newRow("1") << 1.0 << 13;
    QTest::newRow("1.25") << 1.25 << 17;
    QTest::newRow("2") << 2.0 << 27;
    QTest::newRow("3") << 3.0 << 41;
}

void tst_ControlDrawing::textIsDrawnInTheScreensOwnPixels() {
    QFETCH(const double, ratio);
    QFETCH(const int, bottom);
    QImage image(frame * ratio, QImage::Format_RGB32);
    image.setDevicePixelRatio(ratio);
    QPainter painter(&image);
    drawControl(painter, QRect(QPoint(0, 0), frame), {.name = "HHH", .dummy = true});
    const QRect text = textOf(image);
    QVERIFY(text.left() >= 10 * ratio && text.left() <= 12 * ratio);
    QVERIFY(text.height() >= 7 * ratio && text.height() <= 10 * ratio);
    QCOMPARE(text.bottom(), bottom);
}

void tst_ControlDrawing::moreTextsThanAreKeptAreDrawnLikeTheFirst() {
    const ControlLook look{.name = "Pan", .value = 12'345, .max = 65'535, .channels = 2};
    const QImage first = drawn(look);
    for (std::uint32_t value = 0; value < 20'000; ++value) {
        QVERIFY(!valuePicture(value, 2, 1).image.isNull());
    }
    QCOMPARE(drawn(look), first);
}

QTEST_MAIN(tst_ControlDrawing)
#include "tst_ControlDrawing.moc"
