// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/results/KeptFindings.h"

#include "scan/ScanAddressBook.h"

#include <QCryptographicHash>
#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QSaveFile>
#include <QStandardPaths>

namespace {

const QString kTitles = QStringLiteral("conditions");
const QString kFindings = QStringLiteral("findings");
const QString kSelected = QStringLiteral("selected");

QString pathFor(const QString &bookName)
{
    const QByteArray hash = QCryptographicHash::hash(bookName.toUtf8(), QCryptographicHash::Sha256).first(8).toHex();
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation)
        % QStringLiteral("/peoplenook/findings/") % QString::fromLatin1(hash) % QStringLiteral(".json");
}

QString nameOf(const Finding &finding)
{
    return QString(conditionInfo(finding.condition).key) % u'\n' % keyOf(finding);
}

} // namespace

KeptFindings::KeptFindings(const OutlineViewController &results)
{
    QJsonArray findings;
    for (const auto &group : results.rootNodes()) {
        for (const auto &finding : std::as_const(*group).childrenArray())
            findings += nameOf(finding->finding());
    }
    m_json = {{kTitles, QJsonArray::fromStringList(results.conditionTitles())}, {kFindings, findings}};
    if (const PersonItemPtr &selected = results.selectedItem(); selected && !selected->isRootNode())
        m_json.insert(kSelected, nameOf(selected->finding()));
}

KeptFindings KeptFindings::load(const QString &bookName)
{
    QFile file(pathFor(bookName));
    const bool isThere = file.open(QIODevice::ReadOnly);
    return KeptFindings(isThere ? QJsonDocument::fromJson(file.readAll()).object() : QJsonObject());
}

void KeptFindings::save(const QString &bookName) const
{
    const QString path = pathFor(bookName);
    QDir().mkpath(QFileInfo(path).path());
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.setPermissions(QFile::ReadOwner | QFile::WriteOwner)
        && file.write(QJsonDocument(m_json).toJson(QJsonDocument::Compact)) >= 0)
        file.commit();
}

IgnoredFindings::Split KeptFindings::examine() const
{
    QSet<QString> names;
    for (const auto &name : m_json.value(kFindings).toArray())
        names.insert(name.toString());
    QStringList titles;
    for (const auto &title : m_json.value(kTitles).toArray())
        titles += title.toString();
    if (names.isEmpty())
        return {};
    auto now = IgnoredFindings::splitShared(ScanAddressBook::examine(titles));
    now.open = filtered(now.open, [&names](const Finding &finding) { return names.contains(nameOf(finding)); });
    return now;
}

void KeptFindings::select(OutlineViewController &results) const
{
    const QString name = m_json.value(kSelected).toString();
    for (const auto &group : results.rootNodes()) {
        for (const auto &finding : std::as_const(*group).childrenArray()) {
            if (nameOf(finding->finding()) == name)
                return results.selectItem(finding);
        }
    }
}
