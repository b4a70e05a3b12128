// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/compare/CompareHeader.h"

#include "app/compare/CompareText.h"
#include "app/look/Controls.h"

#include <QBoxLayout>
#include <QPushButton>

#include <algorithm>

namespace {

constexpr int kAvatarSize = 44;

} // namespace

CompareHeader::CompareHeader(const std::vector<PersonRecordPtr> &records, const QString &firstUid, QWidget *parent)
    : QWidget(parent)
    , m_keep(new QPushButton(tr("&Keep Everything"), this))
    , m_repair(new QPushButton(tr("&As the Repair Does"), this))
{
    auto *picture = new QLabel;
    const auto withPicture =
        std::ranges::find_if(records, [](const PersonRecordPtr &record) { return record->imageData() != nullptr; });
    const PersonRecordPtr &shown = withPicture == records.end() ? records.front() : *withPicture;
    picture->setPixmap(recordPicture(*shown, kAvatarSize, devicePixelRatioF(), firstUid));
    auto *title = new QLabel(tr("Compare and Merge"));
    makeHeadline(title);
    auto *sentence = new WrappedText(Qt::LeftToRight);
    sentence->setText(tr("%1. Everything is kept unless you untick it; the change can be taken back at any time.")
                          .arg(titleOf(records)));
    setTextColour(sentence, ColourRole::Quiet);
    auto *texts = new QVBoxLayout;
    texts->setSpacing(4);
    texts->addWidget(title);
    texts->addWidget(sentence);
    m_keep->setToolTip(tr("Ticks every value, including those that differ only in how they are written."));
    m_repair->setToolTip(tr("Shows what the repair \"Merge contacts\" gives."));
    m_repair->setCheckable(true);
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(20, 16, 20, 16);
    layout->setSpacing(12);
    layout->addWidget(picture);
    layout->addLayout(texts, 1);
    layout->addWidget(m_keep);
    layout->addWidget(m_repair);
}
