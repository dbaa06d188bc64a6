#include "library/KeyOrder.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace {

// The index behind the text that begins at `start` with its quotation mark.
qsizetype endOfString(const QByteArray& json, qsizetype start) {
    qsizetype i = start + 1;
    while (i < json.size() && json.at(i) != '"') {
        i += json.at(i) == '\\' ? 2 : 1;
    }
    return std::min(i + 1, json.size());
}

qsizetype behindBlanks(const QByteArray& json, qsizetype i) {
    while (i < json.size() && QByteArrayView(" \t\r\n").contains(json.at(i))) {
        ++i;
    }
    return i;
}

bool hasAt(const QByteArray& json, qsizetype i, char character) {
    return i < json.size() && json.at(i) == character;
}

QString textOf(const QByteArray& literal) {
    return QJsonDocument::fromJson('[' + literal + ']').array().first().toString();
}

// The index of the opening brace of the object under the key; the end of the text when there is none.
qsizetype objectUnder(const QByteArray& json, const QByteArray& key) {
    const QByteArray literal = '"' + key + '"';
    for (qsizetype i = 0; i < json.size();) {
        if (json.at(i) != '"') {
            ++i;
            continue;
        }
        const qsizetype end = endOfString(json, i);
        const qsizetype colon = behindBlanks(json, end);
        if (json.mid(i, end - i) == literal && hasAt(json, colon, ':')) {
            const qsizetype value = behindBlanks(json, colon + 1);
            if (hasAt(json, value, '{')) {
                return value;
            }
        }
        i = end;
    }
    return json.size();
}

} // namespace

QStringList keysInOrder(const QByteArray& json, const QByteArray& key) {
    QStringList keys;
    int depth = 0;
    for (qsizetype i = objectUnder(json, key); i < json.size();) {
        const char character = json.at(i);
        if (character == '"') {
            const qsizetype end = endOfString(json, i);
            if (depth == 1 && hasAt(json, behindBlanks(json, end), ':')) {
                keys.append(textOf(json.mid(i, end - i)));
            }
            i = end;
            continue;
        }
        depth += character == '{' || character == '[' ? 1 : 0;
        depth -= character == '}' || character == ']' ? 1 : 0;
        if (depth == 0) {
            break;
        }
        ++i;
    }
    return keys;
}
