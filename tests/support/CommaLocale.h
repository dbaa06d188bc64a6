#pragma once

#include <QProcess>
#include <QTemporaryDir>
#include <QtGlobal>

#include <clocale>

/// Puts the process under a locale with a decimal comma, built for the occasion, and back under the plain one
/// at the end.
class CommaLocale {
public:
    CommaLocale() {
        const QString definition = folder_.filePath(QStringLiteral("de_DE.UTF-8"));
        QProcess::execute(QStringLiteral("localedef"),
                          {QStringLiteral("-i"), QStringLiteral("de_DE"), QStringLiteral("-f"),
                           QStringLiteral("UTF-8"), definition});
        qputenv("LOCPATH", folder_.path().toUtf8());
        isSet_ = std::setlocale(LC_ALL, "de_DE.UTF-8") != nullptr;
    }
    ~CommaLocale() {
        std::setlocale(LC_ALL, "C");
        qunsetenv("LOCPATH");
    }
    CommaLocale(const CommaLocale&) = delete;
    CommaLocale& operator=(const CommaLocale&) = delete;
    CommaLocale(CommaLocale&&) = delete;
    CommaLocale& operator=(CommaLocale&&) = delete;

    /// False where the system has nothing to build a locale from.
    bool isSet() const { return isSet_; }

private:
    QTemporaryDir folder_;
    bool isSet_ = false;
};
