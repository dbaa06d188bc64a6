#include "settings/Destination.h"

#include "artnet/Address.h"
#include "plist/Reading.h"
#include "settings/UserDefaults.h"

namespace {

constexpr QLatin1StringView thisMachine("127.0.0.1");

} // namespace

void Destination::setIPAddress(const QString& dotted) {
    const QString wanted = dotted.isNull() ? thisMachine : dotted;
    const std::optional<std::uint32_t> address = parseAddress(wanted.toStdString());
    if (!address) {
        return;
    }
    tx_address_ = *address;
    defaults_.setObject(QString::fromStdString(printAddress(*address)), destinationKey);
}

QString Destination::text() const {
    return stringValue(defaults_.objectForKey(destinationKey));
}
