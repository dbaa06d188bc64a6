#pragma once

#include <QVariantList>

struct ModeControl;

/// Entries that stay together in one column of a fixture's window.
struct EntryBlock {
    QVariantList entries;
    int rows = 0; ///< of the window
};

/// A fader under this name, or a blank.
EntryBlock entryFor(const ModeControl& control, const QString& name);

/// All blocks one after the other, in columns of about the same height. Blanks that meet become one.
QVariantList inColumns(const QList<EntryBlock>& blocks);
