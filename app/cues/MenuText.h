#pragma once

#include <QString>

/// A menu takes "&" for the mark of a mnemonic and a tab for the border of the shortcuts; the operator's
/// own names may hold either. What is longer than any screen is wide is cut.
inline QString menuText(QString name) {
    constexpr qsizetype longest = 200;
    if (name.size() > longest) {
        name = name.left(longest) + u'…';
    }
    return name.replace('&', "&&").replace('\t', ' ');
}
