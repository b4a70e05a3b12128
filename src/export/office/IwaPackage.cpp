// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/office/IwaPackage.h"

#include <QUuid>

#include <limits>

// Numbers of message types and fields are facts about the format that others have found and published:
// https://github.com/obriensp/iWorkFileFormat, https://github.com/masaccio/numbers-parser (src/protos).

namespace {

constexpr quint64 kMetadataId = 2;
constexpr quint32 kPackageMetadata = 11006;

/// What a reader must understand to read the package: the first version with the present table cells.
constexpr std::initializer_list<quint64> kReadVersion{2, 0, 0};
constexpr std::initializer_list<quint64> kMessageVersion{1, 0, 5};

/// The numbers of a message of Protocol Buffers reach to there.
constexpr qint64 kLongestMessage = std::numeric_limits<qint32>::max();

const QUuid kNamespace(0x2b1c6f0eU, 0x7d53, 0x4b8a, 0x9e, 0x41, 0x5c, 0x0a, 0xd3, 0x86, 0x1f, 0x27);

QByteArray propertyList(const QByteArray &content)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
           "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n<plist version=\"1.0\">\n"
        + content + "\n</plist>\n";
}

} // namespace

IwaPackage::IwaPackage(const QDateTime &time, const QString &name)
    : m_seed(time.toUTC().toString(Qt::ISODateWithMs) + u'\n' + name), m_zip(time)
{ }

QUuid IwaPackage::uuid(const QString &purpose) const
{
    return QUuid::createUuidV5(kNamespace, QString(m_seed + u'\n' + purpose));
}

void IwaPackage::endComponent()
{
    if (m_stream)
        m_stream->finish();
    m_stream.reset();
}

void IwaPackage::beginComponent(quint64 rootId, const QByteArray &locator, Naming naming)
{
    endComponent();
    const QByteArray place = naming == Naming::ByLocator ? locator : locator + '-' + QByteArray::number(rootId);
    m_components.push_back({rootId, locator, place, {}});
    m_zip.beginMember("Index/" + place + ".iwa", ZipPackage::Method::Stored);
    m_stream.emplace(m_zip.member());
}

void IwaPackage::beginObject(quint64 id, quint32 type, qint64 length, const std::vector<quint64> &references)
{
    ProtobufMessage message;
    message.number(1, type).packed(2, kMessageVersion).number(3, quint64(length));
    if (!references.empty())
        message.packed(5, references);
    const ProtobufMessage object = ProtobufMessage().number(1, id).message(2, message);
    QByteArray head;
    ProtobufMessage::appendVarint(head, quint64(object.data().size()));
    m_stream->write(head);
    m_stream->write(object.data());

    Component &component = m_components.back();
    component.references.insert(references.begin(), references.end());
    m_homes[id] = component.rootId;
}

void IwaPackage::add(quint64 id, quint32 type, const ProtobufMessage &message)
{
    beginObject(id, type, message.data().size(), message.references());
    m_stream->write(message.data());
}

void IwaPackage::addLarge(quint64 id, quint32 type, const std::vector<quint64> &references, const Content &content)
{
    qint64 length = 0;
    content([&length](QByteArrayView part) { length += part.size(); });
    if (length > kLongestMessage)
        m_error = Error{ErrorKind::Invalid, QStringLiteral("there is more to write than the format holds (2 GB)")};
    if (m_error)
        return;
    beginObject(id, type, length, references);
    content([this, &length](QByteArrayView part) {
        length -= part.size();
        m_stream->write(part);
    });
    if (length != 0) // the values changed in between: whatever follows would be read at the wrong place
        m_error = Error{ErrorKind::Conflict, QStringLiteral("contacts changed while they were written")};
}

ProtobufMessage IwaPackage::infoOf(const Component &component) const
{
    ProtobufMessage info;
    info.number(1, component.rootId).bytes(2, component.preferredLocator);
    if (component.locator != component.preferredLocator)
        info.bytes(3, component.locator);
    info.packed(4, kReadVersion).packed(5, kReadVersion);
    // Readers find an object of another component only through these.
    for (const quint64 id : component.references) {
        const quint64 home = m_homes.at(id);
        if (home != component.rootId)
            info.message(6, ProtobufMessage().number(1, home).number(2, id));
    }
    return info;
}

void IwaPackage::addMetadata()
{
    ProtobufMessage metadata;
    metadata.number(1, m_lastId);
    for (const Component &component : m_components)
        metadata.message(3, infoOf(component));
    metadata.packed(5, kReadVersion).packed(6, kReadVersion).packed(7, kReadVersion);
    // This one component is not in its own list: readers that find it there look for the others in vain.
    beginComponent(kMetadataId, "Metadata");
    add(kMetadataId, kPackageMetadata, metadata);
    endComponent();

    const QByteArray document = uuid(QStringLiteral("document")).toByteArray(QUuid::WithoutBraces).toUpper();
    m_zip.addMember("Metadata/Properties.plist", ZipPackage::Method::Stored,
        propertyList("<dict>\n<key>documentUUID</key>\n<string>" + document
            + "</string>\n<key>fileFormatVersion</key>\n<string>2.0.0</string>\n</dict>"));
    m_zip.addMember("Metadata/BuildVersionHistory.plist", ZipPackage::Method::Stored,
        propertyList("<array>\n<string>PeopleNook " PEOPLENOOK_VERSION "</string>\n</array>"));
    m_zip.addMember("Metadata/DocumentIdentifier", ZipPackage::Method::Stored, document);
}

Result<void> IwaPackage::writeTo(QIODevice &target)
{
    if (m_error)
        return *m_error;
    endComponent();
    addMetadata();
    return m_zip.writeTo(target);
}
