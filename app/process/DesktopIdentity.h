#pragma once

/// Tells the desktop which of its applications this is, and gives every window the application's icon, also
/// where the program is not installed. To be called once there is an application object.
void identifyToDesktop();
