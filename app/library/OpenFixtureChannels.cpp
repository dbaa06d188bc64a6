#include "library/OpenFixtureChannels.h"

#include "library/FixtureDefinition.h"
#include "library/OpenFixtureDefault.h"
#include "library/PixelMatrix.h"

#include <QJsonArray>

namespace {

constexpr qsizetype largestByteCount = 4;
constexpr auto pixelKeyMark = "$pixelKey";

QString forPixel(const QString& text, const QString& pixelKey) {
    return pixelKey.isNull() ? text : QString(text).replace(pixelKeyMark, pixelKey);
}

QJsonArray capabilitiesOf(const QJsonObject& channel) {
    const QJsonValue only = channel.value("capability");
    return only.isObject() ? QJsonArray{only} : channel.value("capabilities").toArray();
}

bool doesNothing(const QJsonObject& channel) {
    const QJsonArray capabilities = capabilitiesOf(channel);
    return capabilities.size() == 1 && capabilities.first().toObject().value("type") == "NoFunction";
}

} // namespace

OpenFixtureChannels::OpenFixtureChannels(const QJsonObject& fixture, const PixelMatrix& matrix) {
    const QJsonObject available = fixture.value("availableChannels").toObject();
    for (auto channel = available.begin(); channel != available.end() && refusal_.isNull(); ++channel) {
        add(channel.key(), channel.value().toObject(), {QString()});
    }
    const QJsonObject templates = fixture.value("templateChannels").toObject();
    const QStringList pixelKeys = templates.isEmpty() ? QStringList() : matrix.allKeys();
    for (auto channel = templates.begin(); channel != templates.end() && refusal_.isNull(); ++channel) {
        add(channel.key(), channel.value().toObject(), pixelKeys);
    }
}

const OpenChannel* OpenFixtureChannels::channel(const QString& key) const {
    const auto found = channels_.find(key);
    return found == channels_.end() ? nullptr : &*found;
}

const OpenSwitch* OpenFixtureChannels::switching(const QString& key) const {
    const auto found = switches_.find(key);
    return found == switches_.end() ? nullptr : &*found;
}

void OpenFixtureChannels::add(const QString& key, const QJsonObject& channel, const QStringList& pixelKeys) {
    QStringList keys{key};
    for (const QJsonValue alias : channel.value("fineChannelAliases").toArray()) {
        keys.append(alias.toString());
    }
    const auto defaults = defaultBytes(channel, static_cast<std::size_t>(keys.size()));
    if (!defaults || keys.size() > largestByteCount) {
        refuse(key, defaults ? "it has more than 32 bits" : "its default is no level that it has");
        return;
    }
    const bool unused = doesNothing(channel);
    for (qsizetype i = 0; i < keys.size(); ++i) {
        const QString name = i == 0 ? channel.value("name").toString(key) : keys.at(i);
        if (keys.at(i).size() > FixtureBounds::nameLength || name.size() > FixtureBounds::nameLength) {
            refuse(key.left(FixtureBounds::nameLength), "its name is too long");
            return;
        }
        if (channels_.size() + pixelKeys.size() > static_cast<qsizetype>(FixtureBounds::slotsOfAllModes)) {
            refuse(key, QString("there are more than %1 channels").arg(FixtureBounds::slotsOfAllModes));
            return;
        }
        for (const QString& pixelKey : pixelKeys) {
            channels_.insert(forPixel(keys.at(i), pixelKey),
                             {.name = forPixel(name, pixelKey),
                              .fineOf = i == 0 ? QString() : forPixel(keys.at(i - 1), pixelKey),
                              .pixelKey = pixelKey,
                              .defaultValue = defaults->at(static_cast<std::size_t>(i)),
                              .unused = unused});
        }
    }
    addSwitches(key, channel, pixelKeys);
}

void OpenFixtureChannels::addSwitches(const QString& key, const QJsonObject& channel,
                                      const QStringList& pixelKeys) {
    for (const QJsonValue capability : capabilitiesOf(channel)) {
        const QJsonObject switches = capability.toObject().value("switchChannels").toObject();
        for (auto entry = switches.begin(); entry != switches.end(); ++entry) {
            switchCount_ += static_cast<std::size_t>(pixelKeys.size());
            if (switchCount_ > FixtureBounds::switches) {
                refuse(key, QString("there are more than %1 switches").arg(FixtureBounds::switches));
                return;
            }
            for (const QString& pixelKey : pixelKeys) {
                OpenSwitch& found = switches_[forPixel(entry.key(), pixelKey)];
                found.trigger = forPixel(key, pixelKey);
                const QString meant = forPixel(entry.value().toString(), pixelKey);
                if (!found.channels.contains(meant)) {
                    found.channels.append(meant);
                }
            }
        }
    }
}

void OpenFixtureChannels::refuse(const QString& channel, const QString& reason) {
    if (refusal_.isNull()) {
        refusal_ = QString("channel '%1': %2").arg(channel, reason);
    }
}
