#pragma once

#include <QDialog>
#include <QString>
#include <QStringList>

#include <functional>

/// What a sheet says and asks for. The informative text may have several lines.
struct SheetText {
    QString message;
    QString informativeText;
    QString fieldLabel;
};

/// Opens a sheet on the window that owns it; `accepted` is called when it was. Returns at once: the rest of
/// the program goes on while the sheet is open. A closed sheet deletes itself.
void openSheet(QDialog& sheet, const std::function<void()>& accepted);

/// The sheet that the window has open, which comes to the front; null when it has none. There is no second
/// one beside it: the functions below return it and do no more.
QDialog* raiseOpenSheet(QWidget& window);

/// Opens a sheet with one text field that starts empty; OK hands its text over exactly as typed.
QDialog* openTextSheet(QWidget& window, const SheetText& text,
                       const std::function<void(const QString&)>& accepted);

/// The same with a whole number that starts at 0.
QDialog* openNumberSheet(QWidget& window, const SheetText& text, const std::function<void(int)>& accepted);

/// A question without a field, whose default button says what is done.
QDialog* openQuestionSheet(QWidget& window, const SheetText& text, const QString& button,
                           const std::function<void()>& accepted);

/// Tells something, with further lines to read below it.
QDialog* openReportSheet(QWidget& window, const SheetText& text, const QStringList& lines);
