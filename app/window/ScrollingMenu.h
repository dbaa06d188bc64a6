#pragma once

class QMenu;

/// Lets a menu of thousands of items stand in one column that scrolls, instead of in columns beyond the
/// screen.
void scrollInOneColumn(QMenu& menu);
