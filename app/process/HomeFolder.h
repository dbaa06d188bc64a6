#pragma once

/// Sets HOME to the folder that the user database gives, when it is missing or empty, as it is for a program
/// that no session started. The toolkit would take the root folder for the home.
void ensureHome();
