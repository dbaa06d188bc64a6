#include "library/OpenFixtureMode.h"

#include "library/OpenFixtureChannels.h"
#include "library/PixelMatrix.h"

#include <QJsonObject>

QString OpenFixtureMode::read(const QJsonObject& mode) {
    mode_.name = mode.value("name").toString(mode.value("shortName").toString()).simplified();
    if (mode_.name.size() > FixtureBounds::nameLength) {
        return QString("a mode's name has more than %1 characters").arg(FixtureBounds::nameLength);
    }
    for (const QJsonValue entry : mode.value("channels").toArray()) {
        addEntry(entry);
        if (!refusal_.isNull()) {
            return QString("mode '%1': %2").arg(mode_.name, refusal_);
        }
    }
    return {};
}

FixtureMode OpenFixtureMode::take() {
    for (auto& [pixel, slots_] : heads_) {
        mode_.heads.push_back(std::move(slots_));
    }
    return std::move(mode_);
}

void OpenFixtureMode::refuse(const QString& reason) {
    if (refusal_.isNull()) {
        refusal_ = reason;
    }
}

void OpenFixtureMode::addEntry(const QJsonValue& entry) {
    if (entry.isObject()) {
        ++block_;
        addBlock(entry.toObject());
    } else {
        addChannel(entry, {});
    }
}

void OpenFixtureMode::addBlock(const QJsonObject& block) {
    if (block.value("insert") != "matrixChannels") {
        refuse(QString("there is no block '%1'").arg(block.value("insert").toString()));
        return;
    }
    const QJsonValue repeatFor = block.value("repeatFor");
    const QStringList pixelKeys =
        repeatFor.isArray() ? repeatFor.toVariant().toStringList() : matrix_.keysFor(repeatFor.toString());
    if (pixelKeys.isEmpty()) {
        refuse("it repeats channels for no pixel");
        return;
    }
    const QJsonArray templates = block.value("templateChannels").toArray();
    const bool perPixel = block.value("channelOrder") == "perPixel";
    if (!perPixel && block.value("channelOrder") != "perChannel") {
        refuse("it repeats channels neither per pixel nor per channel");
        return;
    }
    const qsizetype count = pixelKeys.size() * templates.size();
    for (qsizetype i = 0; i < count && refusal_.isNull(); ++i) {
        const QString& pixelKey = pixelKeys.at(perPixel ? i / templates.size() : i % pixelKeys.size());
        const QJsonValue channel = templates.at(perPixel ? i % templates.size() : i / pixelKeys.size());
        addChannel(channel.isString() ? QJsonValue(channel.toString().replace("$pixelKey", pixelKey))
                                      : channel,
                   pixelKey);
    }
}

void OpenFixtureMode::addChannel(const QJsonValue& key, const QString& pixelKey) {
    if (key.isNull()) {
        addSlot({.name = {}, .unused = true}, {}, pixelKey);
    } else if (!key.isString()) {
        refuse("a channel that is no text");
    } else if (const OpenChannel* const channel = channels_.channel(key.toString())) {
        addSlot({.name = channel->name,
                 .defaultValue = channel->defaultValue,
                 .unused = channel->unused,
                 .fineOfPrevious = !channel->fineOf.isNull() && channel->fineOf == previousKey_},
                key.toString(), channel->pixelKey);
    } else {
        addSwitch(key.toString(), pixelKey);
    }
}

void OpenFixtureMode::addSlot(const FixtureSlot& slot, const QString& key, const QString& pixelKey) {
    if (mode_.channels.size() == FixtureBounds::slotsOfMode) {
        refuse(QString("it has more than %1 slots").arg(FixtureBounds::slotsOfMode));
        return;
    }
    if (!pixelKey.isNull()) {
        heads_[{block_, pixelKey}].push_back(static_cast<int>(mode_.channels.size()));
    }
    mode_.channels.push_back(slot);
    previousKey_ = key;
}

void OpenFixtureMode::addSwitch(const QString& key, const QString& pixelKey) {
    const OpenSwitch* const found = channels_.switching(key);
    if (!found) {
        refuse(QString("there is no channel '%1'").arg(key.left(FixtureBounds::nameLength)));
        return;
    }
    addSlot({.name = key.left(FixtureBounds::nameLength)}, key, pixelKey);
    mode_.remarks.append(
        QString("'%1' is %2, as the level of '%3' has it; its fader is called '%1' all the time and "
                "rests at 0")
            .arg(key, "'" + found->channels.join("' or '") + "'", found->trigger));
}
