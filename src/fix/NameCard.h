// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/model/PersonRecord.h"
#include "fix/PreviewDocument.h"

/// Some builders spell a label differently.
enum class NameCardForm { Usual, OfTitleAndSuffix };

/// Adds seven rows of name fields in two columns: as they are, under an existing header, and as they will be, under a
/// new one. @p typeAfter is the person's new type.
void addNameCard(PreviewDocument &document, const PersonRecord &before, const PersonRecord &after, NameCardForm form,
    const QString &typeAfter);
