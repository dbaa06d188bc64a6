#pragma once

#include <QString>
#include <QStringList>

/// A name as windows show it: the operator's own may be of any length, and what is longer than any screen is
/// wide is cut.
QString shownName(const QString& name);

/// A name as the text of a menu item, which takes "&" for the mark of a mnemonic and a tab for the border of
/// the shortcuts; a name may hold either.
QString menuText(const QString& name);

/// "A", "A and B", "A, B and C"; of many the first few and how many there are besides. There has to be
/// one.
QString listed(const QStringList& names);
