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

/// A Pages or Numbers document as written since 2013: a zip file of components (Index/....iwa), each a list of objects,
/// which are typed messages that refer to each other by number.
///
/// Objects are written as they are added; only their numbers and references are kept. One thread.
class IwaPackage
{
public:
    /// The number of the document object, which every package has.
    static constexpr quint64 kDocumentId = 1;

    using Sink = std::function<void(QByteArrayView)>;
    /// Passes on the bytes of a message piece by piece.
    using Content = std::function<void(const Sink &)>;

    enum class Naming {
        ByLocator, ///< the only component with this locator
        ByLocatorAndId, ///< one of many
    };

    /// @p name distinguishes documents of one moment; time and name determine the UUIDs.
    IwaPackage(const QDateTime &time, const QString &name);

    quint64 newId() { return ++m_lastId; }
    /// Depends only on package and purpose.
    QUuid uuid(const QString &purpose) const;

    /// Ends the previous component. @p rootId is the number of the new one's first object.
    void beginComponent(quint64 rootId, const QByteArray &locator, Naming naming = Naming::ByLocator);
    /// Adds an object to the current component.
    void add(quint64 id, quint32 type, const ProtobufMessage &message);
    /// The same for a message too large for memory: @p content is called twice, to measure and to write; @p references
    /// are the objects that it refers to.
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
    std::unordered_map<quint64, quint64> m_homes; // object to root of its component
    quint64 m_lastId = 2; // the document and the package's own description
    std::optional<Error> m_error;
};
