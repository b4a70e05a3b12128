// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/book/ABPerson.h"
#include "fix/Comparison.h"
#include "fix/LostValues.h"

#include <QPixmap>

// What the window that compares contacts says and shows of them and their values.

QPixmap recordPicture(const PersonRecord &record, int size, qreal ratio, const QString &uid = {});

/// A name to tell the contact by; never empty.
QString nameOf(const PersonRecord &record);
/// "3 contacts named Ann Lee"
QString titleOf(const std::vector<PersonRecordPtr> &records);
/// "Phone · Mobile"
QString titleOf(const Comparison::Row &row);
/// Null where the contact has no such value.
QString shownText(const Comparison::Row &row, const Comparison::Cell &cell);
/// Of a value that only says the same as a fuller one.
QString sameText(const Comparison::Row &row);
/// Whether no contact has more than an empty value in it.
bool isEmpty(const Comparison::Row &row);

/// Whether a value is among these, which its contact lost.
bool isLost(const Comparison::Row &row, std::size_t contact, const std::vector<LostValue> &lost);

struct MergeSummary
{
    QString text;
    QStringList leftBehind; ///< values and card lines with their titles
};
MergeSummary summaryOf(const std::vector<PersonRecordPtr> &records, const PersonRecord &result);
