#pragma once

#include <QString>

/// A menu takes "&" for the mark of a mnemonic and a tab for the border of the shortcuts; the operator's
/// own names may hold either.
inline QString menuText(QString name) {
    return name.replace('&', "&&").replace('\t', ' ');
}
