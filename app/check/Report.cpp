#include "check/Report.h"

#include "rig/ShownText.h"

#include <algorithm>

QString onOneLine(QString text) {
    const auto isCommand = [](QChar character) {
        return character.category() == QChar::Other_Control || character.category() == QChar::Other_Format ||
               character.category() == QChar::Separator_Line ||
               character.category() == QChar::Separator_Paragraph;
    };
    std::ranges::replace_if(text, isCommand, QChar(QChar::ReplacementCharacter));
    return text;
}

void Report::add(const QString& place, const QString& fault, const QString& remedy) {
    const QString where = place.isEmpty() ? file_ : file_ + ": " + place;
    lines_.append(onOneLine(where + ": " + fault + "; " + remedy));
}

QString quoted(const QString& name) {
    return "'" + shownName(name) + "'";
}
