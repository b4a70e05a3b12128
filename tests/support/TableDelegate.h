// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/AlertPanel.h"
#include "table/grid/LoadContactsViewController.h"

#include <functional>

/// What a contact table has around it: answers questions as told and notes what it was asked for.
class TableDelegate : public ContactTableDelegate, public AlertPanel
{
public:
    void makeFreshButtonEnable() override { ++loadCount; }
    AlertPanel &alertPanel() override { return *this; }
    RowExporter *rowExporter() override { return exporter; }
    Answer runAlertPanel(
        const QString &title, const QString &message, const QString &defaultButton, const QString &other) override
    {
        question = QStringList{title, message, defaultButton, other}.join(u'|');
        if (whileAsking)
            whileAsking();
        return answer;
    }

    RowExporter *exporter = nullptr;
    Answer answer = Answer::Default;
    std::function<void()> whileAsking;
    QString question;
    int loadCount = 0;
};
