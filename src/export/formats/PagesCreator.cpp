// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/formats/PagesCreator.h"

#include "export/formats/PagesDocument.h"

void PagesCreator::initWithDictionary(PersonRows rows, const QString &SavePath, bool isShowAllInfo)
{
    m_rows = std::move(rows);
    m_savePath = SavePath;
    m_isShowAllInfo = isShowAllInfo;
}

ExportReport PagesCreator::startConvert() const
{
    const LineOrder order = m_isShowAllInfo ? LineOrder::Fixed : LineOrder::AsInRow;
    const auto write = [this, order](QIODevice &target, TextRepairs &repairs) {
        return PagesDocument(m_clock(), m_savePath, m_rows, order).writeTo(target, repairs);
    };
    return exportOffice(m_savePath, QStringLiteral("pages"), write);
}
