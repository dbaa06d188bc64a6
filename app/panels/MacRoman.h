#pragma once

#include <QByteArrayView>
#include <QString>

/// The text that bytes spell in the Mac OS Roman character set.
QString decodeMacRoman(QByteArrayView bytes);
