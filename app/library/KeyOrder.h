#pragma once

#include <QByteArray>
#include <QStringList>

/// The keys of the object that stands under `key` in a valid JSON text, in the order in which they are
/// written: the toolkit's objects sort them. Of several objects under that key, those of the first.
QStringList keysInOrder(const QByteArray& json, const QByteArray& key);
