#include "rig/ShownText.h"

#include <algorithm>

QString shownName(const QString& name) {
    constexpr qsizetype longest = 200;
    return name.size() > longest ? name.left(longest) + u'…' : name;
}

QString menuText(const QString& name) {
    return shownName(name).replace('&', "&&").replace('\t', ' ');
}

QString listed(const QStringList& names) {
    constexpr qsizetype mostNames = 10;
    QStringList shown = names.first(std::min(names.size(), mostNames));
    if (shown.size() < names.size()) {
        shown.append(QString("%1 more").arg(names.size() - shown.size()));
    }
    const QString last = shown.takeLast();
    return shown.isEmpty() ? last : shown.join(", ") + " and " + last;
}
