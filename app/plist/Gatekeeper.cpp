#include "plist/Gatekeeper.h"

#include "plist/BinaryGatekeeper.h"
#include "plist/XmlGatekeeper.h"

bool isBinaryPropertyList(QByteArrayView bytes) {
    return bytes.startsWith("bplist00");
}

bool passesGatekeeper(QByteArrayView bytes, const GatekeeperLimits& limits) {
    if (static_cast<std::size_t>(bytes.size()) > limits.maxBytes) {
        return false;
    }
    return isBinaryPropertyList(bytes) ? passesBinaryGatekeeper(bytes, limits)
                                       : passesXmlGatekeeper(bytes, limits);
}
