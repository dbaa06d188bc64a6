#pragma once

/// Tells the desktop that the console is at work, so that it neither sleeps nor slows the tick down:
/// "Faderhall is running". Where no desktop offers the service nothing happens.
/// Does not wait for the desktop. Ends with the process.
void beginActivity();
