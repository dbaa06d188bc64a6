#include "plist/MoveAside.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>

QString nameAside(const QString& file, const QString& mark) {
    const QString stamp = QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd-HHmmss"));
    const QString aside = file + u'.' + mark + u'-' + stamp;
    QString name = aside;
    for (int counter = 2; QFileInfo::exists(name); ++counter) {
        name = aside + u'-' + QString::number(counter);
    }
    return name;
}

bool moveAside(const QString& file, const QString& mark) {
    return QFile::rename(file, nameAside(file, mark));
}
