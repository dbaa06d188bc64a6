#include "library/QxfDocument.h"

#include "library/FixtureDefinition.h"

#include <QXmlStreamReader>

#include <optional>

namespace {

class QxfParser {
public:
    explicit QxfParser(const QByteArray& bytes) : xml_(bytes) {}

    QxfDocument parse() {
        if (findRoot()) {
            while (xml_.readNextStartElement()) {
                readPart();
            }
        }
        while (!xml_.atEnd()) {
            xml_.readNext(); // what stands behind the root has to be XML too
        }
        if (xml_.hasError() && document_.refusal.isNull()) {
            document_.refusal = QString("line %1: %2").arg(xml_.lineNumber()).arg(xml_.errorString());
        }
        return std::move(document_);
    }

private:
    // The first reason stands, and nothing more is read.
    void refuse(const QString& reason) {
        if (document_.refusal.isNull()) {
            document_.refusal = QString("line %1: %2").arg(xml_.lineNumber()).arg(reason);
        }
        xml_.raiseError(reason);
    }

    void refuseMore(std::size_t count, std::size_t largest, const char* things) {
        if (count > largest) {
            refuse(QString("more than %1 %2").arg(largest).arg(things));
        }
    }

    bool findRoot() {
        while (!xml_.atEnd() && xml_.readNext() != QXmlStreamReader::StartElement) {
            if (!xml_.entityDeclarations().isEmpty()) {
                refuse("it declares entities, which no fixture needs");
            }
        }
        if (!xml_.hasError() && xml_.name() != QLatin1StringView("FixtureDefinition")) {
            refuse("it is no fixture definition");
        }
        return !xml_.hasError();
    }

    void readPart() {
        if (is("Manufacturer")) {
            document_.maker = text();
        } else if (is("Model")) {
            document_.model = text();
        } else if (is("Channel")) {
            readChannel();
        } else if (is("Mode")) {
            readMode();
        } else {
            xml_.skipCurrentElement();
        }
    }

    void readChannel() {
        QxfChannel channel{.name = attribute("Name"), .preset = attribute("Preset")};
        channel.defaultValue = defaultValue().value_or(0);
        while (xml_.readNextStartElement()) {
            if (is("Group")) {
                channel.isLowByte = xml_.attributes().value("Byte") == QLatin1StringView("1");
                xml_.skipCurrentElement();
            } else if (is("Capability")) {
                readCapability();
            } else {
                xml_.skipCurrentElement();
            }
        }
        document_.channels.insert(channel.name, channel);
    }

    void readCapability() {
        while (xml_.readNextStartElement()) {
            if (is("Alias")) {
                document_.aliases.push_back(
                    {.mode = attribute("Mode"), .channel = attribute("Channel"), .with = attribute("With")});
            }
            xml_.skipCurrentElement();
        }
        refuseMore(document_.aliases.size(), FixtureBounds::aliases, "aliases");
    }

    void readMode() {
        QxfMode mode{.name = attribute("Name"), .channels = {}, .heads = {}};
        while (xml_.readNextStartElement()) {
            if (is("Channel")) {
                const int index = slotIndex(xml_.attributes().value("Number"));
                mode.channels.push_back({.index = index, .channel = text()});
            } else if (is("Head")) {
                mode.heads.push_back(readHead());
                refuseMore(mode.heads.size(), FixtureBounds::slotsOfMode, "heads in a mode");
            } else {
                xml_.skipCurrentElement();
            }
        }
        document_.modes.push_back(std::move(mode));
    }

    std::vector<int> readHead() {
        std::vector<int> head;
        while (xml_.readNextStartElement()) {
            if (is("Channel")) {
                head.push_back(slotIndex(text()));
            } else {
                xml_.skipCurrentElement();
            }
        }
        return head;
    }

    bool is(const char* name) const { return xml_.name() == QLatin1StringView(name); }
    QString text() { return checkedName(xml_.readElementText()); }
    QString attribute(const char* name) {
        return checkedName(xml_.attributes().value(QLatin1StringView(name)).toString());
    }

    QString checkedName(const QString& name) {
        if (name.size() > FixtureBounds::nameLength) {
            refuse(QString("a text of more than %1 characters").arg(FixtureBounds::nameLength));
        }
        return name.simplified();
    }

    // Nothing when the channel has none of its own.
    std::optional<std::uint8_t> defaultValue() {
        const auto attributes = xml_.attributes();
        if (!attributes.hasAttribute("Default")) {
            return std::nullopt;
        }
        bool isNumber = false;
        const int value = attributes.value("Default").toInt(&isNumber);
        if (!isNumber || value < 0 || value > UINT8_MAX) {
            refuse("a default that is no number from 0 to 255");
        }
        return static_cast<std::uint8_t>(value);
    }

    int slotIndex(QStringView digits) {
        bool isNumber = false;
        const int index = digits.toInt(&isNumber);
        if (!isNumber || index < 0 || index >= static_cast<int>(FixtureBounds::slotsOfMode)) {
            refuse(QString("a slot that is no number from 0 to %1").arg(FixtureBounds::slotsOfMode - 1));
            return 0;
        }
        return index;
    }

    QXmlStreamReader xml_;
    QxfDocument document_;
};

} // namespace

QxfDocument parseQxf(const QByteArray& bytes) {
    return QxfParser(bytes).parse();
}
