#pragma once

#include <QByteArray>

#include <chrono>
#include <future>
#include <vector>

/// Asks the session's message buses, from a thread of its own, whether they answer at all. The toolkit waits
/// more than a minute for one that takes connections and then says nothing, before there is a window.
class SessionBus {
public:
    /// Begins to ask. The buses are those that the environment names, and the one in the runtime folder.
    explicit SessionBus(std::chrono::milliseconds limit = std::chrono::seconds(1));

    /// Waits for the answers until the limit is over, counted from when it was made; a bus that says nothing
    /// is one that the toolkit will not find. To be called once, before there is an application object.
    void giveUpIfSilent();

private:
    struct Question {
        const char* variable; ///< where the toolkit reads the address
        std::future<bool> isSilent;
    };

    void ask(const char* variable, const QByteArray& address, std::chrono::steady_clock::time_point until);

    std::vector<Question> questions_;
};
