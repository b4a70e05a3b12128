// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "export/office/IwaStream.h"
#include "export/office/ProtobufMessage.h"
#include "export/office/ZipPackage.h"

#include <functional>
#include <optional>
#include <set>
#include <unordered_map>

/// A document of Pages or Numbers as files have been since 2013: a zip file of components (Index/....iwa), each a list
/// of objects, which are typed messages that point to one another by number.
///
/// Objects are written as they are added; only their numbers and who points to whom are kept. For one thread.
class IwaPackage
{
public:
    /// The number of the document itself, which every package has.
    static constexpr quint64 kDocumentId = 1;

    using Sink = std::function<void(QByteArrayView)>;
    /// Hands over the bytes of a message piece by piece.
    using Content = std::function<void(const Sink &)>;

    enum class Naming {
        ByLocator, ///< the only component with this locator
        ByLocatorAndId, ///< one of many
    };

    /// @p name tells documents of one moment apart; time and name make the document's UUIDs.
    IwaPackage(const QDateTime &time, const QString &name);

    quint64 newId() { return ++m_lastId; }
    /// The same for the same package and purpose.
    QUuid uuid(const QString &purpose) const;

    /// Ends the component before. @p rootId is the number of the first object in it.
    void beginComponent(quint64 rootId, const QByteArray &locator, Naming naming = Naming::ByLocator);
    /// An object of the component begun.
    void add(quint64 id, quint32 type, const ProtobufMessage &message);
    /// The same for a message that is not to be in memory as a whole: @p content is called twice, to measure and to
    /// write it, and @p references are the objects that it points to.
    void addLarge(quint64 id, quint32 type, const std::vector<quint64> &references, const Content &content);

    /// Ends the package and writes it; like ZipPackage::writeTo(). Once only.
    Result<void> writeTo(QIODevice &target);

private:
    struct Component
    {
        quint64 rootId;
        QByteArray preferredLocator;
        QByteArray locator;
        std::set<quint64> references;
    };

    void beginObject(quint64 id, quint32 type, qint64 length, const std::vector<quint64> &references);
    ProtobufMessage infoOf(const Component &component) const;
    void addMetadata();
    void endComponent();

    QString m_seed;
    ZipPackage m_zip;
    std::optional<IwaStream> m_stream;
    std::vector<Component> m_components;
    std::unordered_map<quint64, quint64> m_homes; // object to the root of its component
    quint64 m_lastId = 2; // the document and the package's own description
    std::optional<Error> m_error;
};
