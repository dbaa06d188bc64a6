#include "settings/UserDefaults.h"

#include "plist/PropertyList.h"

#include <QAbstractEventDispatcher>
#include <QStandardPaths>

#include <chrono>

UserDefaults::UserDefaults(QString path, QObject* parent)
    : QObject(parent), file_(std::move(path)), values_(file_.read().value_or(QVariantMap())) {
    writeSoon_.setSingleShot(true);
    writeSoon_.setInterval(std::chrono::milliseconds(500));
    connect(&writeSoon_, &QTimer::timeout, this, &UserDefaults::writeInBackground);
}

QString UserDefaults::defaultPath() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/com.KTQ.OrvaneApplications/Faderhall.plist");
}

void UserDefaults::setObject(const QVariant& value, const QString& forKey) {
    // Compared as written: QVariant takes an integer and a real of the same size for equal.
    const QByteArray written = writeXmlPropertyList(QVariantMap{{forKey, value}});
    const bool isUnwritable = value.isValid() && written.isEmpty();
    if (isUnwritable || written == writeXmlPropertyList(QVariantMap{{forKey, objectForKey(forKey)}})) {
        return;
    }
    if (value.isValid()) {
        values_.insert(forKey, value);
    } else {
        values_.remove(forKey);
    }
    isChanged_ = true;
    writeLater();
}

void UserDefaults::writeLater() {
    const bool hasEventLoop = QAbstractEventDispatcher::instance();
    if (hasEventLoop && !writeSoon_.isActive()) {
        writeSoon_.start();
    }
}

void UserDefaults::startWriting() {
    if (isChanged_) {
        writeLater();
    }
}

void UserDefaults::writeInBackground() {
    if (writing_.isRunning()) {
        writeSoon_.start(); // a slow disk
        return;
    }
    takeResult();
    if (isChanged_) {
        isChanged_ = !writing_.start([&file = file_, values = values_] { return file.write(values); });
    }
}

// What failed is as good as changed.
void UserDefaults::takeResult() {
    isChanged_ = !writing_.finish() || isChanged_;
}

bool UserDefaults::synchronize() {
    writeSoon_.stop();
    takeResult();
    if (isChanged_ && file_.write(values_)) {
        isChanged_ = false;
    }
    return !isChanged_;
}
