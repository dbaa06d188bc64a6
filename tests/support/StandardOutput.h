#pragma once

#include <QByteArray>

#include <functional>

/// What an action prints on standard output. Assert on the result, not inside the action: a failure's message
/// would be caught with the rest.
QByteArray standardOutputOf(const std::function<void()>& action);

/// The same for standard error.
QByteArray standardErrorOf(const std::function<void()>& action);
