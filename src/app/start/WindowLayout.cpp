// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/start/WindowLayout.h"

#include "app/look/Controls.h"
#include "app/table/ColumnLook.h"
#include "table/grid/ContactTableModel.h"

#include <QMainWindow>
#include <QSettings>

namespace {

constexpr QSize kFirstSize(1120, 700);
const QString kGeometry = QStringLiteral("window/geometry");
const QString kColumns = QStringLiteral("table/columns");
const QString kWidths = QStringLiteral("table/widths");

} // namespace

bool restoreLayout(QMainWindow &window, ContactTableModel &table, ColumnLook &look)
{
    const QSettings settings;
    if (!window.restoreGeometry(settings.value(kGeometry).toByteArray()))
        setFirstSize(window, kFirstSize);
    std::vector<Field> columns;
    for (const QString &label : settings.value(kColumns).toStringList()) {
        if (const auto field = fieldLabelled(label))
            columns.push_back(*field);
    }
    if (!columns.empty())
        table.setColumns(columns);
    const QVariantMap widths = settings.value(kWidths).toMap();
    look.setWidths(widths);
    return !widths.isEmpty();
}

void saveLayout(const QMainWindow &window, bool isInPlace, const ContactTableModel &table, const ColumnLook &look)
{
    QStringList columns;
    for (const Field field : table.columns())
        columns += fieldInfo(field).label;
    QSettings settings;
    if (isInPlace)
        settings.setValue(kGeometry, window.saveGeometry());
    settings.setValue(kColumns, columns);
    settings.setValue(kWidths, look.widths());
}
