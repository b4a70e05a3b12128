// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "fix/FixPreview.h"

#include "contacts/model/NameTexts.h"
#include "fix/AnalysePerson.h"
#include "fix/EmailSlots.h"
#include "fix/MergeContacts.h"
#include "fix/PropertyRepairs.h"
#include "fix/RepairOptions.h"

#include <algorithm>
#include <array>

namespace {

const QString kPerson = QStringLiteral("person");
const QString kCompany = QStringLiteral("company");
constexpr int kLeft = 14;
constexpr int kHeight = 17;
constexpr int kLineStep = 20;
constexpr int kHeaderY = 152;
constexpr int kHeaderWidth = 110;
constexpr int kSentenceWidth = 310;
constexpr int kWidestSentence = 380; // from the left margin to the edge of the card

/// A name and as many fields as there is room for. Without @p before they are removed, else added to what it has.
void addPersonCard(PreviewDocument &document, const ABPerson &person, const ABPerson *before = nullptr)
{
    const DisplayFields known = before ? analysePerson(*before) : DisplayFields();
    const auto changeOf = [&](const DisplayFields::value_type &field) {
        return !before                                                   ? PreviewChange::Removed
            : std::ranges::find(known, field) == std::ranges::end(known) ? PreviewChange::Added
                                                                         : PreviewChange::None;
    };
    constexpr int kNameY = 132;
    constexpr std::size_t kRoom = 6;
    document.add({kLeft, kNameY, 100, kHeight}, QStringLiteral("Name :"), kLabelInk);
    document.add({114, kNameY, 210, kHeight}, presentNames(*person.record()), {},
        before ? PreviewChange::None : PreviewChange::Removed);
    const DisplayFields fields = analysePerson(person);
    for (std::size_t i = 0; i < std::min(fields.size(), kRoom); ++i) {
        const auto &[label, text] = fields[i];
        const int y = kNameY - kLineStep * int(i + 1);
        const bool isLong =
            label == QStringLiteral("Phonetic First Name") || label == QStringLiteral("Phonetic Last Name");
        document.add({kLeft, y, isLong ? 150 : 100, kHeight}, label % QStringLiteral(" :"), kLabelInk);
        document.add({isLong ? 164 : 114, y, 210, kHeight}, text, {}, changeOf(fields[i]));
    }
}

} // namespace

/// The header of an option's preview and what follows below it.
struct PreviewHeader
{
    using Builder = void (FixPreview::*)(PreviewDocument &) const;

    QLatin1StringView title;
    std::optional<Condition> condition; ///< none: whatever the condition
    const char *text; ///< nullptr: the builder adds everything
    int width = kHeaderWidth;
    std::optional<PreviewColour> colour = kHeaderInk;
    Builder builder = nullptr;

    static std::span<const PreviewHeader> all();
};

std::span<const PreviewHeader> PreviewHeader::all()
{
    constexpr const char *kBefore = "Before Fixing";
    constexpr auto kPlain = std::optional<PreviewColour>();
    static const std::array headers{
        PreviewHeader{kRemoveTheSuffix, {}, kBefore, kHeaderWidth, kPaleHeaderInk,
            &FixPreview::removeSuffixInNameAndCreatTextToDocumentView},
        PreviewHeader{kDeleteThisContact, {}, "the contact selected will be deleted:", kSentenceWidth, kDeletionInk,
            &FixPreview::deletePersonAndCreatTextFieldToDocumentView},
        PreviewHeader{
            kUseQuestionMarks, {}, kBefore, kHeaderWidth, kHeaderInk, &FixPreview::creatTextFieldToDocumentView},
        PreviewHeader{kConvertToCompany, {}, kBefore, kHeaderWidth, kHeaderInk,
            &FixPreview::convertCompanyAndCreatTextFieldToDocumentView},
        PreviewHeader{kDeleteDuplicateProperty, Condition::DupAddress, "The duplicated addresses will be removed.",
            kSentenceWidth, kPlain},
        PreviewHeader{kDeleteDuplicateProperty, Condition::DupPhone, "The duplicated phone numbers will be removed.",
            kSentenceWidth, kPlain},
        PreviewHeader{kDeleteDuplicateProperty, Condition::DupEmail, "The duplicated email addresses will be removed.",
            kSentenceWidth, kPlain},
        PreviewHeader{kDeleteBlankProperty, Condition::EmptyNotes, "The empty notes field will be removed.",
            kSentenceWidth, kPlain},
        PreviewHeader{kDeleteBlankProperty, Condition::EmptyNickname, "The empty nickname will be removed.",
            kSentenceWidth, kPlain},
        PreviewHeader{kRemoveTheTitle, {}, kBefore, kHeaderWidth, kHeaderInk,
            &FixPreview::removeTitleAndCreatTextFieldToDocumentView},
        PreviewHeader{kRemoveTheSpace, {}, kBefore, kHeaderWidth, kHeaderInk,
            &FixPreview::removeSpaceInFirstNameAndCreatTextToDocumentView},
        PreviewHeader{kHyphenateFirstName, {}, kBefore, kHeaderWidth, kHeaderInk,
            &FixPreview::replaceSpaceInFirstNameAndCreatTextToDocumentView},
        PreviewHeader{kMergeContacts, {}, "The duplicate contacts will be merged into one person.", 450, kPlain,
            &FixPreview::mergeContactsAndCreatTextToDocumentView},
        PreviewHeader{kRemoveEmail, Condition::ShareEmail, nullptr, 0, kPlain, &FixPreview::addSharedAddress},
        PreviewHeader{kDeleteDuplicateContacts, Condition::DuplicateContacts,
            "The duplicate contact(s) will delete from contact.", kWidestSentence, kPlain},
        PreviewHeader{
            kDeleteDuplicateContacts, Condition::ShareEmail, nullptr, 0, kPlain, &FixPreview::addSharersNames},
        PreviewHeader{kEditInContacts, Condition::BlankName, "This contact has no name.You can edit it in Contacts.",
            kWidestSentence, kPlain},
        PreviewHeader{kEditInContacts, Condition::InvalidChar,
            "This contact exsit invalid char. You can edit it in Contacts.", kWidestSentence, kPlain},
    };
    return headers;
}

PreviewDocument FixPreview::creatScrollerViewWithTitle(const QString &title) const
{
    PreviewDocument document;
    const auto headers = PreviewHeader::all();
    const auto header = std::ranges::find_if(headers, [&](const PreviewHeader &row) {
        return row.title == title && row.condition.value_or(m_finding.condition) == m_finding.condition;
    });
    if (header == headers.end())
        return document;
    if (header->text) {
        document.add({kLeft, kHeaderY, header->width, kHeight}, QString::fromLatin1(header->text), header->colour);
    }
    if (header->builder)
        (this->*header->builder)(document);
    return document;
}

void FixPreview::removeSuffixInNameAndCreatTextToDocumentView(PreviewDocument &document) const
{
    addCardOfRepair(document, removeSuffix, NameCardForm::OfTitleAndSuffix, kPerson);
}

void FixPreview::removeTitleAndCreatTextFieldToDocumentView(PreviewDocument &document) const
{
    addCardOfRepair(document, removeTitle, NameCardForm::OfTitleAndSuffix, kPerson);
}

void FixPreview::removeSpaceInFirstNameAndCreatTextToDocumentView(PreviewDocument &document) const
{
    addCardOfRepair(document, removeSpacesInFirstName, NameCardForm::Usual, kPerson);
}

void FixPreview::replaceSpaceInFirstNameAndCreatTextToDocumentView(PreviewDocument &document) const
{
    addCardOfRepair(document, hyphenateFirstName, NameCardForm::Usual, kPerson);
}

void FixPreview::convertCompanyAndCreatTextFieldToDocumentView(PreviewDocument &document) const
{
    addCardOfRepair(document, convertToCompany, NameCardForm::Usual, kCompany);
}

void FixPreview::creatTextFieldToDocumentView(PreviewDocument &document) const
{
    const auto fillBoth = [](ABPerson &person) {
        fillMissingName(person, kABFirstNameProperty);
        fillMissingName(person, kABLastNameProperty);
    };
    addCardOfRepair(document, fillBoth, NameCardForm::Usual, kPerson);
}

void FixPreview::deletePersonAndCreatTextFieldToDocumentView(PreviewDocument &document) const
{
    addPersonCard(document, *m_finding.person);
}

void FixPreview::mergeContactsAndCreatTextToDocumentView(PreviewDocument &document) const
{
    if (const QList<ABPersonPtr> people = peopleToMerge(m_finding); !people.isEmpty())
        addPersonCard(document, *mergeContacts(people), m_finding.person.get());
}

void FixPreview::addSharedAddress(PreviewDocument &document) const
{
    constexpr int kTop = 138;
    const EmailSlots emails(*m_finding.person->record());
    const QString &address = emails.ofLabel(m_finding.duplicateEmailType);
    const QString shown = address.isNull() ? QStringLiteral("(null)") : address;
    document.add({kLeft, kTop, kWidestSentence, kHeight},
        QStringLiteral("The Email Address \"") % shown % QStringLiteral("\" will be deleted "), kDeletionInk);
    document.add(
        {kLeft, kTop - kLineStep, kWidestSentence, kHeight}, QStringLiteral("form this contact"), kDeletionInk);
}

void FixPreview::addSharersNames(PreviewDocument &document) const
{
    constexpr qsizetype kRoom = 5;
    int y = 138;
    const auto addRow = [&](const QString &text) {
        document.add({kLeft, y, kSentenceWidth, kHeight}, text, kDeletionInk);
        y -= kLineStep;
    };
    for (const auto &person :
        m_finding.duplicateEmailArray.first(std::min(m_finding.duplicateEmailArray.size(), kRoom)))
        addRow(displayName(*person->record()));
    addRow(m_finding.duplicateEmailArray.size() < kRoom ? QStringLiteral("will be deleted from Contacts")
                                                        : QStringLiteral(" and others will be deleted from Contacts"));
}

void FixPreview::addCardOfRepair(PreviewDocument &document, const std::function<void(ABPerson &)> &repair,
    NameCardForm form, const QString &typeAfter) const
{
    const PersonRecordPtr before = m_finding.person->record();
    ABPerson copy(m_finding.person->uniqueId(), before);
    repair(copy);
    addNameCard(document, *before, *copy.record(), form, typeAfter);
}
