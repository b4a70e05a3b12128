// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/ContactTable.h"

#include "contacts/model/Utf8Text.h"

#include <QHash>

ContactTable::ContactTable(
    const std::shared_ptr<ABAddressBook> &book, const CommandContext &context, bool answeredInAdvance)
    : m_context(context), m_alertPanel(context.console, answeredInAdvance), m_controller(*this)
{
    m_controller.updateTableView(LoadContactsViewController::loadPeople(book));
    QObject::connect(&m_controller, &LoadContactsViewController::failed, &m_controller, [this](const QString &reason) {
        m_hasFailed = true;
        m_context.report(reason);
    });
}

std::vector<int> ContactTable::rowsOf(const std::vector<std::string> &uids)
{
    QHash<QString, int> rowOfUid;
    const PersonRows &rows = m_controller.getTableViewDataArray();
    for (const PersonRow &row : rows)
        rowOfUid.insert(row->person()->uniqueId(), static_cast<int>(rowOfUid.size()));
    std::vector<int> found;
    for (const auto &text : uids) {
        const QString uid = textOfUtf8(text);
        const auto row = rowOfUid.constFind(uid);
        if (row == rowOfUid.constEnd()) {
            m_hasFailed = true;
            m_context.reportMissing(uid);
        } else if (std::ranges::find(found, *row) == found.end()) {
            found.push_back(*row);
        }
    }
    return found;
}
