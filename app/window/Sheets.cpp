#include "window/Sheets.h"

#include "rig/ShownText.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

#include <algorithm>
#include <limits>
#include <memory>
#include <utility>

namespace {

constexpr int leastWidth = 340;
constexpr QSize reportSize(480, 160);

/// A whole number. Left empty, or with a sign alone, it is 0 and not the number that stood there before.
class NumberField : public QSpinBox {
public:
    NumberField() {
        setLocale(QLocale::c()); // numbers are typed the same everywhere
        setRange(std::numeric_limits<int>::min(), std::numeric_limits<int>::max());
        selectAll();
    }

    void fixup(QString& text) const override { text = "0"; }
};

void addLine(QVBoxLayout& rows, const QString& text, bool bold) {
    auto* const line = new QLabel(shownName(text));
    line->setTextFormat(Qt::PlainText);
    QFont font = line->font();
    font.setBold(bold);
    line->setFont(font);
    rows.addWidget(line);
}

std::unique_ptr<QDialogButtonBox> okAndCancel() {
    return std::make_unique<QDialogButtonBox>(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
}

// Only once it stands in its sheet, which else takes its first button.
void makeAcceptDefault(const QDialogButtonBox& box) {
    for (QAbstractButton* const button : box.buttons()) {
        if (box.buttonRole(button) == QDialogButtonBox::AcceptRole) {
            static_cast<QPushButton*>(button)->setDefault(true);
        }
    }
}

// The texts; the accessory view, if any, stands between them and the buttons.
QDialog* makeSheet(QWidget& window, const SheetText& text, std::unique_ptr<QWidget> accessory,
                   std::unique_ptr<QDialogButtonBox> buttons) {
    auto* const sheet = new QDialog(&window);
    sheet->setWindowTitle(text.message);
    sheet->setMinimumWidth(leastWidth); // the title bar has room for the whole message
    auto* const rows = new QVBoxLayout(sheet);
    addLine(*rows, text.message, true);
    for (const QString& line : text.informativeText.split('\n', Qt::SkipEmptyParts)) {
        addLine(*rows, line, false);
    }
    if (QWidget* const field = accessory.release()) {
        auto* const accessoryRow = new QFormLayout;
        accessoryRow->addRow(text.fieldLabel, field);
        rows->addLayout(accessoryRow);
        field->setFocus();
    }
    QObject::connect(buttons.get(), &QDialogButtonBox::accepted, sheet, &QDialog::accept);
    QObject::connect(buttons.get(), &QDialogButtonBox::rejected, sheet, &QDialog::reject);
    QDialogButtonBox& box = *buttons;
    rows->addWidget(buttons.release());
    makeAcceptDefault(box);
    return sheet;
}

// An answered sheet leaves the keys with the window that had them: a fixture, when its levels are to go into
// the new cue. First of all, so that what the answer sets off may bring another window forward.
void returnTheKeys(QDialog& sheet) {
    const auto activate = [front = QPointer(QApplication::activeWindow())] {
        if (front) {
            front->activateWindow();
        }
    };
    QObject::connect(&sheet, &QDialog::accepted, &sheet, activate);
    QObject::connect(&sheet, &QDialog::rejected, &sheet, activate);
}

// One question at a time: a second one brings the first to the front.
QDialog* openTexts(QWidget& window, const SheetText& text, std::unique_ptr<QWidget> accessory,
                   std::unique_ptr<QDialogButtonBox> buttons, const std::function<void()>& accepted) {
    if (QDialog* const open = raiseOpenSheet(window)) {
        return open;
    }
    QDialog* const sheet = makeSheet(window, text, std::move(accessory), std::move(buttons));
    openSheet(*sheet, accepted);
    return sheet;
}

} // namespace

QDialog* raiseOpenSheet(QWidget& window) {
    const auto sheets = window.findChildren<QDialog*>(QString(), Qt::FindDirectChildrenOnly);
    const auto open = std::ranges::find_if(sheets, [](const QDialog* sheet) { return sheet->isVisible(); });
    if (open == sheets.end()) {
        return nullptr;
    }
    (*open)->raise();
    (*open)->activateWindow();
    return *open;
}

void openSheet(QDialog& sheet, const std::function<void()>& accepted) {
    sheet.setAttribute(Qt::WA_DeleteOnClose);
    sheet.setWindowModality(Qt::WindowModal);
    returnTheKeys(sheet);
    QObject::connect(&sheet, &QDialog::accepted, &sheet, accepted);
    sheet.open();
}

QDialog* openTextSheet(QWidget& window, const SheetText& text,
                       const std::function<void(const QString&)>& accepted) {
    auto field = std::make_unique<QLineEdit>();
    const auto answer = [field = field.get(), accepted] { accepted(field->text()); };
    return openTexts(window, text, std::move(field), okAndCancel(), answer);
}

QDialog* openNumberSheet(QWidget& window, const SheetText& text, const std::function<void(int)>& accepted) {
    auto field = std::make_unique<NumberField>();
    const auto answer = [field = field.get(), accepted] { accepted(field->value()); };
    return openTexts(window, text, std::move(field), okAndCancel(), answer);
}

QDialog* openQuestionSheet(QWidget& window, const SheetText& text, const QString& button,
                           const std::function<void()>& accepted) {
    auto buttons = std::make_unique<QDialogButtonBox>(QDialogButtonBox::Cancel);
    buttons->addButton(button, QDialogButtonBox::AcceptRole);
    return openTexts(window, text, nullptr, std::move(buttons), accepted);
}

QDialog* openReportSheet(QWidget& window, const SheetText& text, const QStringList& lines) {
    auto report = std::make_unique<QPlainTextEdit>(lines.join('\n'));
    report->setReadOnly(true);
    report->setMinimumSize(reportSize);
    return openTexts(window, text, std::move(report),
                     std::make_unique<QDialogButtonBox>(QDialogButtonBox::Ok), [] {});
}
