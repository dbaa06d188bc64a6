#pragma once

#include <QString>

/// What stands against a start, as a sentence; null when nothing does. Raises the limit of open files as far
/// as it may where it is low. Needs no application object.
QString whyNotToStart();
