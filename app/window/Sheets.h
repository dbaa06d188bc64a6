#pragma once

#include <QDialog>
#include <QString>

#include <functional>

/// What a sheet says and asks for.
struct SheetText {
    QString message;
    QString informativeText;
    QString fieldLabel;
};

/// Opens a sheet on `window` with one text field that starts empty; OK hands its text over exactly as typed.
/// Returns at once: the rest of the program goes on while the sheet is open. While the window has a sheet
/// open there is no second one: that sheet comes to the front and is returned.
QDialog* openTextSheet(QWidget& window, const SheetText& text,
                       const std::function<void(const QString&)>& accepted);

/// The same with a whole number that starts at 0.
QDialog* openNumberSheet(QWidget& window, const SheetText& text, const std::function<void(int)>& accepted);
