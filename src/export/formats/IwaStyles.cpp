// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/formats/IwaStyles.h"

ProtobufMessage IwaStyles::named(const QString &name, const QString &identifier) const
{
    return ProtobufMessage().text(1, name).text(2, identifier).reference(5, m_stylesheet);
}

quint64 IwaStyles::append(Kind kind, const QString &identifier, const ProtobufMessage &message)
{
    const quint64 id = m_package.newId();
    m_styles.push_back({id, kind, identifier, message});
    return id;
}

quint64 IwaStyles::add(Kind kind, const QString &name, const QString &identifier)
{
    const ProtobufMessage style = ProtobufMessage().message(1, named(name, identifier));
    // The style of a shape that holds text is one of a shape with something added.
    return append(kind, identifier, kind == Kind::Shape ? ProtobufMessage().message(1, style) : style);
}

quint64 IwaStyles::addParagraph(
    const QString &name, const QString &identifier, const ProtobufMessage &characters, const ProtobufMessage &layout)
{
    return append(Kind::Paragraph, identifier,
        ProtobufMessage().message(1, named(name, identifier)).message(11, characters).message(12, layout));
}

void IwaStyles::write()
{
    constexpr quint32 kStylesheet = 401;
    ProtobufMessage sheet;
    for (const Style &style : m_styles)
        sheet.reference(1, style.id);
    for (const Style &style : m_styles)
        sheet.message(2, ProtobufMessage().text(1, style.identifier).reference(2, style.id));
    m_package.beginComponent(m_stylesheet, "DocumentStylesheet");
    m_package.add(m_stylesheet, kStylesheet, sheet);
    for (const Style &style : m_styles)
        m_package.add(style.id, quint32(style.kind), style.message);
}
