// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/model/PersonRecord.h"
#include "fix/PreviewDocument.h"

/// Some builders write a label in another way than the rest.
enum class NameCardForm { Usual, OfTitleAndSuffix };

/// Adds seven rows of name fields in two columns: as they are under a header that is there already, and as they will be
/// under a header of their own. @p typeAfter is what the person counts as then.
void addNameCard(PreviewDocument &document, const PersonRecord &before, const PersonRecord &after, NameCardForm form,
    const QString &typeAfter);
