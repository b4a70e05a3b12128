// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "fix/Finding.h"
#include "fix/NameCard.h"
#include "fix/PreviewDocument.h"

#include <functional>

/// Previews a fix of a finding's person without changing anything. Reads the people when a document is requested, and
/// applies the fix's functions to detached copies.
class FixPreview
{
public:
    explicit FixPreview(Finding finding) : m_finding(std::move(finding)) { }

    /// The preview of the option with this title; without fields if the condition has no such option.
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
