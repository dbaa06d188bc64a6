#include "rig/NameStack.h"

QString NameStack::resolvedName(const QString& name) const {
    const qsizetype place = name.indexOf('#');
    if (place < 0) {
        return name;
    }
    QString resolved = name;
    return resolved.replace(place, 1, QString::number(static_cast<int>(_layerNum)));
}
