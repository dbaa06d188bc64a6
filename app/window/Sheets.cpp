#include "window/Sheets.h"

#include "widgets/ShownText.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
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

// The accessory view stands between the texts and the buttons.
QDialog* makeSheet(QWidget& window, const SheetText& text, std::unique_ptr<QWidget> field) {
    auto* const sheet = new QDialog(&window);
    sheet->setAttribute(Qt::WA_DeleteOnClose);
    sheet->setWindowModality(Qt::WindowModal);
    sheet->setWindowTitle(text.message);
    sheet->setMinimumWidth(leastWidth); // the title bar has room for the whole message
    auto* const rows = new QVBoxLayout(sheet);
    addLine(*rows, text.message, true);
    if (!text.informativeText.isEmpty()) {
        addLine(*rows, text.informativeText, false);
    }
    QWidget* const accessory = field.get();
    auto* const accessoryRow = new QFormLayout;
    accessoryRow->addRow(text.fieldLabel, field.release());
    rows->addLayout(accessoryRow);
    accessory->setFocus();
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    buttons->button(QDialogButtonBox::Ok)->setDefault(true);
    QObject::connect(buttons, &QDialogButtonBox::accepted, sheet, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, sheet, &QDialog::reject);
    rows->addWidget(buttons);
    return sheet;
}

QDialog* openSheetOf(const QWidget& window) {
    const auto sheets = window.findChildren<QDialog*>(QString(), Qt::FindDirectChildrenOnly);
    const auto open = std::ranges::find_if(sheets, [](const QDialog* sheet) { return sheet->isVisible(); });
    return open == sheets.end() ? nullptr : *open;
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
QDialog* openSheet(QWidget& window, const SheetText& text, std::unique_ptr<QWidget> field,
                   const std::function<void()>& accepted) {
    if (QDialog* const open = openSheetOf(window)) {
        open->raise();
        open->activateWindow();
        return open;
    }
    QDialog* const sheet = makeSheet(window, text, std::move(field));
    returnTheKeys(*sheet);
    QObject::connect(sheet, &QDialog::accepted, sheet, accepted);
    sheet->open();
    return sheet;
}

} // namespace

QDialog* openTextSheet(QWidget& window, const SheetText& text,
                       const std::function<void(const QString&)>& accepted) {
    auto field = std::make_unique<QLineEdit>();
    const auto answer = [field = field.get(), accepted] { accepted(field->text()); };
    return openSheet(window, text, std::move(field), answer);
}

QDialog* openNumberSheet(QWidget& window, const SheetText& text, const std::function<void(int)>& accepted) {
    auto field = std::make_unique<NumberField>();
    const auto answer = [field = field.get(), accepted] { accepted(field->value()); };
    return openSheet(window, text, std::move(field), answer);
}
