#include "window/Sheets.h"

#include "cues/MenuText.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

#include <limits>

namespace {

void addLine(QVBoxLayout& rows, const QString& text, bool bold) {
    auto* const line = new QLabel(text);
    line->setTextFormat(Qt::PlainText);
    QFont font = line->font();
    font.setBold(bold);
    line->setFont(font);
    rows.addWidget(line);
}

// The accessory view stands between the texts and the buttons.
QDialog* makeSheet(QWidget& window, const SheetText& text, QWidget* field) {
    auto* const sheet = new QDialog(&window);
    sheet->setAttribute(Qt::WA_DeleteOnClose);
    sheet->setWindowModality(Qt::WindowModal);
    sheet->setWindowTitle(text.message);
    auto* const rows = new QVBoxLayout(sheet);
    addLine(*rows, text.message, true);
    if (!text.informativeText.isEmpty()) {
        addLine(*rows, text.informativeText, false);
    }
    auto* const accessory = new QFormLayout;
    accessory->addRow(text.fieldLabel, field);
    rows->addLayout(accessory);
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    buttons->button(QDialogButtonBox::Ok)->setDefault(true);
    QObject::connect(buttons, &QDialogButtonBox::accepted, sheet, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, sheet, &QDialog::reject);
    rows->addWidget(buttons);
    field->setFocus();
    return sheet;
}

} // namespace

QDialog* openTextSheet(QWidget& window, const SheetText& text,
                       const std::function<void(const QString&)>& accepted) {
    auto* const field = new QLineEdit;
    QDialog* const sheet = makeSheet(window, text, field);
    QObject::connect(sheet, &QDialog::accepted, sheet, [field, accepted] { accepted(field->text()); });
    sheet->open();
    return sheet;
}

QDialog* openNumberSheet(QWidget& window, const SheetText& text, const std::function<void(int)>& accepted) {
    auto* const field = new QSpinBox;
    field->setRange(std::numeric_limits<int>::min(), std::numeric_limits<int>::max());
    field->selectAll();
    QDialog* const sheet = makeSheet(window, text, field);
    QObject::connect(sheet, &QDialog::accepted, sheet, [field, accepted] { accepted(field->value()); });
    sheet->open();
    return sheet;
}
