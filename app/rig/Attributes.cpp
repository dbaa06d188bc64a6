#include "rig/Attributes.h"

#include <QHash>
#include <QStringView>

namespace {

bool isDigit(QChar c) {
    return c >= u'0' && c <= u'9';
}

// Where there may be several, the attribute ends with the number of the first.
const QHash<QString, QString>& plainNames() {
    static const QHash<QString, QString> names{{"dimmer", "Dimmer"},     {"intensity", "Dimmer"},
                                               {"master", "Dimmer"},     {"master dimmer", "Dimmer"},
                                               {"level", "Dimmer"},      {"red", "ColorAdd_R"},
                                               {"green", "ColorAdd_G"},  {"blue", "ColorAdd_B"},
                                               {"white", "ColorAdd_W"},  {"amber", "ColorAdd_RY"},
                                               {"lime", "ColorAdd_GY"},  {"uv", "ColorAdd_UV"},
                                               {"cyan", "ColorSub_C"},   {"magenta", "ColorSub_M"},
                                               {"yellow", "ColorSub_Y"}, {"pan", "Pan"},
                                               {"tilt", "Tilt"},         {"gobo", "Gobo1"},
                                               {"prism", "Prism1"},      {"shutter", "Shutter1"},
                                               {"strobe", "Shutter1"},   {"zoom", "Zoom"},
                                               {"focus", "Focus1"},      {"iris", "Iris"},
                                               {"frost", "Frost1"},      {"fog", "Fog1"},
                                               {"haze", "Haze1"},        {"fan", "Fan1"}};
    return names;
}

struct NumberedName {
    QStringView name;
    QStringView number;
};

NumberedName withoutNumber(QStringView text) {
    if (text.endsWith(u'#')) {
        return {.name = text.chopped(1).trimmed(), .number = {}};
    }
    qsizetype end = text.size();
    while (end > 0 && isDigit(text[end - 1])) {
        --end;
    }
    return {.name = text.first(end).trimmed(), .number = text.sliced(end)};
}

bool isOfSeveralWheels(const QString& attribute) {
    return attribute == u"Gobo1" || attribute == u"Prism1";
}

} // namespace

QString attributeOfName(const QString& name) {
    const QString plain = name.simplified().toLower();
    const NumberedName parts = withoutNumber(plain);
    const QString attribute = plainNames().value(parts.name.toString());
    const bool isWheel = parts.number.size() == 1 && parts.number != u"0" && isOfSeveralWheels(attribute);
    return isWheel ? attribute.chopped(1) + parts.number.toString() : attribute;
}
