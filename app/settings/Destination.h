#pragma once

#include <QLatin1StringView>
#include <QString>

#include <cstdint>

class UserDefaults;

/// In the user defaults, the address that was last accepted, as text.
inline constexpr QLatin1StringView destinationKey("tx_address");

/// Where the datagrams go: one IPv4 address, kept in the user defaults.
class Destination {
public:
    explicit Destination(UserDefaults& defaults) : defaults_(defaults) {}

    /// Takes a dotted address and remembers it; null stands for the address of this machine. Anything
    /// else is refused, and the address stays as it is.
    void setIPAddress(const QString& dotted);

    /// The address that was last accepted, as text.
    QString text() const;
    /// In host order, first octet in the most significant byte; 0 until an address was accepted.
    std::uint32_t tx_address() const { return tx_address_; }

private:
    UserDefaults& defaults_;
    std::uint32_t tx_address_ = 0;
};
