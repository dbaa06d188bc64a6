#include "widgets/ShownText.h"

QString shownName(const QString& name) {
    constexpr qsizetype longest = 200;
    return name.size() > longest ? name.left(longest) + u'…' : name;
}

QString menuText(const QString& name) {
    return shownName(name).replace('&', "&&").replace('\t', ' ');
}
