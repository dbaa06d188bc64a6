#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

/// The bytes that a control puts on the pasteboard: the keyed archive (NSKeyedArchiver's binary property
/// list) of an array that holds one text, the level in decimal digits.
QByteArray archiveLevel(int value);

/// The integer that the first element of an archived array reads as; nothing when the bytes are no keyed
/// archive of an array, or the array does not begin with a text or a number. Bytes may be anything at all.
std::optional<int> unarchiveLevel(const QByteArray& bytes);
