// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "fix/Finding.h"
#include "fix/NameCard.h"
#include "fix/PreviewDocument.h"

#include <functional>

/// Shows what a fix will do to a finding's person; changes nothing. It reads the people when it is asked for a
/// document, and applies the fix's own functions to detached copies.
class FixPreview
{
public:
    explicit FixPreview(Finding finding) : m_finding(std::move(finding)) { }

    /// The preview of the option with this title; without fields when the finding's condition knows none of it.
    PreviewDocument creatScrollerViewWithTitle(const QString &title) const;

    // Each adds the fields of a fix below the header.
    void removeSuffixInNameAndCreatTextToDocumentView(PreviewDocument &document) const;
    void deletePersonAndCreatTextFieldToDocumentView(PreviewDocument &document) const;
    void creatTextFieldToDocumentView(PreviewDocument &document) const;
    void convertCompanyAndCreatTextFieldToDocumentView(PreviewDocument &document) const;
    void removeTitleAndCreatTextFieldToDocumentView(PreviewDocument &document) const;
    void removeSpaceInFirstNameAndCreatTextToDocumentView(PreviewDocument &document) const;
    void replaceSpaceInFirstNameAndCreatTextToDocumentView(PreviewDocument &document) const;
    void mergeContactsAndCreatTextToDocumentView(PreviewDocument &document) const;

private:
    void addSharedAddress(PreviewDocument &document) const;
    void addSharersNames(PreviewDocument &document) const;
    void addCardOfRepair(PreviewDocument &document, const std::function<void(ABPerson &)> &repair, NameCardForm form,
        const QString &typeAfter) const;

    friend struct PreviewHeader;
    Finding m_finding;
};
