// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "export/office/IwaPackage.h"

/// The styles of a Pages or Numbers document, collected and then written together.
class IwaStyles
{
public:
    explicit IwaStyles(IwaPackage &package) : m_package(package), m_stylesheet(package.newId()) { }

    enum class Kind : quint32 {
        Character = 2021,
        Paragraph = 2022,
        List = 2023,
        Shape = 2025,
        Table = 6003,
        Cell = 6004
    };

    quint64 stylesheet() const { return m_stylesheet; }

    /// Returns the style's number. @p identifier is unique in the document. All else has the reader's defaults.
    quint64 add(Kind kind, const QString &name, const QString &identifier);
    /// The same for a paragraph style with character or layout settings.
    quint64 addParagraph(const QString &name, const QString &identifier, const ProtobufMessage &characters,
        const ProtobufMessage &layout);

    /// Writes all styles into a new component.
    void write();

private:
    struct Style
    {
        quint64 id;
        Kind kind;
        QString identifier;
        ProtobufMessage message;
    };

    ProtobufMessage named(const QString &name, const QString &identifier) const;
    quint64 append(Kind kind, const QString &identifier, const ProtobufMessage &message);

    IwaPackage &m_package;
    quint64 m_stylesheet;
    std::vector<Style> m_styles;
};
