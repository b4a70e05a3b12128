// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/formats/PagesCreator.h"

#include "export/formats/PagesDocument.h"

ExportReport PagesCreator::startConvert() const
{
    const LineOrder order = m_isShowAllInfo ? LineOrder::Fixed : LineOrder::AsInRow;
    const auto write = [this, order](QIODevice &target, TextRepairs &repairs) {
        return PagesDocument(m_clock(), m_savePath, m_rows, order).writeTo(target, repairs);
    };
    return exportDocument(m_savePath, QLatin1StringView("pages"), write);
}
