#include "library/QxfReader.h"

#include "library/QxfDocument.h"

#include <QSet>

#include <algorithm>
#include <optional>

namespace {

class ModeMaker {
public:
    explicit ModeMaker(const QxfDocument& document) : document_(document) {}

    // Nothing, and a reason in refusal(), when the mode contradicts itself or the channels.
    std::optional<FixtureMode> make(const QxfMode& mode) {
        const std::optional<std::vector<const QxfChannel*>> channels = channelsInOrder(mode);
        if (!channels || !headsLieWithin(mode, channels->size())) {
            return std::nullopt;
        }
        return FixtureMode{.name = mode.name,
                           .channels = slotsOf(*channels),
                           .heads = mode.heads,
                           .remarks = remarksOn(mode)};
    }

    const QString& refusal() const { return refusal_; }

private:
    void refuse(const QxfMode& mode, const QString& reason) {
        refusal_ = QString("mode '%1': %2").arg(mode.name, reason);
    }

    // A null pointer for a slot that the mode leaves out.
    std::optional<std::vector<const QxfChannel*>> channelsInOrder(const QxfMode& mode) {
        std::vector<const QxfChannel*> channels;
        for (const QxfMode::Slot& slot : mode.channels) {
            const auto found = document_.channels.find(slot.channel);
            if (found == document_.channels.end()) {
                refuse(mode, QString("there is no channel '%1'").arg(slot.channel));
                return std::nullopt;
            }
            const auto index = static_cast<std::size_t>(slot.index);
            channels.resize(std::max(channels.size(), index + 1));
            if (channels[index]) {
                refuse(mode, QString("two channels at slot %1").arg(index + 1));
                return std::nullopt;
            }
            channels[index] = &*found;
        }
        return channels;
    }

    bool headsLieWithin(const QxfMode& mode, std::size_t size) {
        for (const std::vector<int>& head : mode.heads) {
            if (std::ranges::any_of(head, [&](int slot) { return static_cast<std::size_t>(slot) >= size; })) {
                refuse(mode, "a head with a channel that the mode does not have");
                return false;
            }
        }
        return true;
    }

    static std::vector<FixtureSlot> slotsOf(const std::vector<const QxfChannel*>& channels) {
        std::vector<FixtureSlot> made;
        made.reserve(channels.size());
        const QxfChannel* previous = nullptr;
        for (const QxfChannel* const channel : channels) {
            made.push_back(channel ? slotOf(*channel) : FixtureSlot{.name = {}, .unused = true});
            made.back().fineOfPrevious = previous && channel && isFineOf(*channel, *previous);
            previous = channel;
        }
        return made;
    }

    static FixtureSlot slotOf(const QxfChannel& channel) {
        return {.name = channel.name, .defaultValue = channel.defaultValue, .unused = isUnused(channel)};
    }

    QStringList remarksOn(const QxfMode& mode) const {
        QSet<QString> names;
        for (const QxfMode::Slot& slot : mode.channels) {
            names.insert(slot.channel);
        }
        QStringList remarks;
        for (const QxfAlias& alias : document_.aliases) {
            if (alias.mode == mode.name && names.contains(alias.channel)) {
                remarks.append(
                    QString("'%1' is '%2' at some levels of another channel; its fader is called '%1' "
                            "all the time")
                        .arg(alias.channel, alias.with));
            }
        }
        remarks.removeDuplicates();
        return remarks;
    }

    const QxfDocument& document_;
    QString refusal_;
};

FixtureReading refused(const QString& reason) {
    return {.definition = {}, .refusal = reason};
}

} // namespace

FixtureReading readQxf(const QByteArray& bytes) {
    const QxfDocument document = parseQxf(bytes);
    if (!document.refusal.isNull()) {
        return refused(document.refusal);
    }
    if (document.model.isEmpty() || document.modes.empty()) {
        return refused(document.model.isEmpty() ? "it names no model" : "it has no mode");
    }
    FixtureReading reading{.definition = {.maker = document.maker, .model = document.model, .modes = {}},
                           .refusal = {}};
    ModeMaker maker(document);
    for (const QxfMode& mode : document.modes) {
        std::optional<FixtureMode> made = maker.make(mode);
        const QString refusal = made ? addMode(reading.definition, std::move(*made)) : maker.refusal();
        if (!refusal.isNull()) {
            return refused(refusal);
        }
    }
    return reading;
}
