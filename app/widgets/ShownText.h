#pragma once

#include <QString>

/// The operator's own names may be of any length; what is longer than any screen is wide is cut.
inline QString shownName(const QString& name) {
    constexpr qsizetype longest = 200;
    return name.size() > longest ? name.left(longest) + u'…' : name;
}

/// A menu takes "&" for the mark of a mnemonic and a tab for the border of the shortcuts; a name may hold
/// either.
inline QString menuText(const QString& name) {
    return shownName(name).replace('&', "&&").replace('\t', ' ');
}
