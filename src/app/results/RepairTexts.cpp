// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/results/RepairTexts.h"

#include "app/look/Counted.h"

#include <QCoreApplication>

#include <algorithm>
#include <array>

namespace {

struct Texts
{
    QLatin1StringView option;
    const char *future;
    const char *past;
    bool countsRemoved = false; ///< %1 of the past is of contacts removed, not of contacts repaired
};

constexpr std::array kTexts{
    Texts{kConvertToCompany, QT_TRANSLATE_NOOP("Repairs", "%1 will be converted to company contacts."),
        QT_TRANSLATE_NOOP("Repairs", "%1 converted to company contacts")},
    Texts{kUseQuestionMarks, QT_TRANSLATE_NOOP("Repairs", "The empty name of %1 will become \"???\"."),
        QT_TRANSLATE_NOOP("Repairs", "Empty name replaced with \"???\" in %1")},
    Texts{kDeleteThisContact, QT_TRANSLATE_NOOP("Repairs", "%1 will be deleted from the address book."),
        QT_TRANSLATE_NOOP("Repairs", "%1 deleted"), true},
    Texts{kMergeContacts, QT_TRANSLATE_NOOP("Repairs", "The duplicates of %1 will be merged."),
        QT_TRANSLATE_NOOP("Repairs", "%1 merged into %2"), true},
    Texts{kDeleteDuplicateContacts, QT_TRANSLATE_NOOP("Repairs", "The duplicates of %1 will be deleted."),
        QT_TRANSLATE_NOOP("Repairs", "%1 deleted"), true},
    Texts{kRemoveTheSpace, QT_TRANSLATE_NOOP("Repairs", "Spaces in the first name of %1 will be removed."),
        QT_TRANSLATE_NOOP("Repairs", "Spaces removed from the first name of %1")},
    Texts{kHyphenateFirstName, QT_TRANSLATE_NOOP("Repairs", "The first name of %1 will be hyphenated."),
        QT_TRANSLATE_NOOP("Repairs", "First name of %1 hyphenated")},
    Texts{kDeleteBlankProperty, QT_TRANSLATE_NOOP("Repairs", "The blank property of %1 will be deleted."),
        QT_TRANSLATE_NOOP("Repairs", "Blank property deleted from %1")},
    Texts{kRemoveEmail, QT_TRANSLATE_NOOP("Repairs", "The shared email address of %1 will be removed."),
        QT_TRANSLATE_NOOP("Repairs", "Shared email address removed from %1")},
    Texts{kDeleteDuplicateProperty, QT_TRANSLATE_NOOP("Repairs", "Duplicate values of %1 will be deleted."),
        QT_TRANSLATE_NOOP("Repairs", "Duplicate values deleted from %1")},
    Texts{kRemoveTheSuffix, QT_TRANSLATE_NOOP("Repairs", "The suffix of %1 will be removed."),
        QT_TRANSLATE_NOOP("Repairs", "Suffix removed from %1")},
    Texts{kRemoveTheTitle, QT_TRANSLATE_NOOP("Repairs", "The title of %1 will be removed."),
        QT_TRANSLATE_NOOP("Repairs", "Title removed from %1")},
};

QString tr(const char *text)
{
    return QCoreApplication::translate("Repairs", text);
}

/// Null for the option that only opens contacts.
const Texts *textsOf(const QString &option)
{
    const auto found = std::ranges::find_if(kTexts, [&](const Texts &texts) { return texts.option == option; });
    return found == kTexts.end() ? nullptr : &*found;
}

QString contacts(qsizetype count)
{
    return counted(count, tr("contact"), tr("contacts"));
}

} // namespace

QString futureOfRepair(const QString &option, qsizetype count)
{
    const Texts *texts = textsOf(option);
    return texts ? tr(texts->future).arg(contacts(count)) : QString();
}

QString pastOfRepair(const QString &option, const FixReport &report)
{
    QStringList parts;
    const Texts *texts = textsOf(option);
    const qsizetype count = texts && texts->countsRemoved ? report.removed : report.repaired;
    if (texts && count > 0) {
        const QString past = tr(texts->past).arg(contacts(count));
        parts += past.contains(QStringLiteral("%2")) ? past.arg(QLocale().toString(report.added)) : past;
    }
    if (report.skipped > 0)
        parts += tr("%1 skipped: %2").arg(report.skipped).arg(tr(kNoLongerThere.data()));
    if (report.failed > 0)
        parts += tr("%1 failed: %2").arg(report.failed).arg(report.firstFailure);
    if (report.left > 0)
        parts += tr("%1 not tried").arg(report.left);
    return parts.join(QStringLiteral("; "));
}
