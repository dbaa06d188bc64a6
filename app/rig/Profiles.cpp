#include "rig/Profiles.h"

#include "plist/Reading.h"
#include "print/Print.h"

void Profiles::setTable(const std::optional<QVariantMap>& table) {
    table_ = table;
    shipped_ = table.value_or(QVariantMap());
}

void Profiles::addUserProfiles(const QVariantMap& userProfiles) {
    for (auto profile = userProfiles.begin(); profile != userProfiles.end(); ++profile) {
        printLine(QString("Adding user profile: '%1'").arg(profile.key()).toStdString());
        if (table_) {
            table_->insert(profile.key(), profile.value());
        }
    }
}

bool Profiles::ships(const QString& name) const {
    return shipped_.contains(name) && shipped_.value(name) == profile(name);
}

void Profiles::setProfile(const QString& name, const QVariant& profile) {
    if (!table_) {
        return;
    }
    if (profile.isValid()) {
        table_->insert(name, profile);
    } else {
        table_->remove(name);
    }
}

QVariantList Profiles::profileWithName(const QString& name) const {
    return table_ ? listValue(table_->value(name)) : QVariantList();
}
