// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/results/FindingHead.h"

#include "app/look/ContactPicture.h"
#include "app/look/Controls.h"

#include <QBoxLayout>
#include <QLabel>

namespace {

constexpr int kPictureSize = 64;

} // namespace

FindingHead::FindingHead(QWidget *parent)
    : QWidget(parent)
    , m_name(new WrappedText)
    , m_picture(new QLabel(this))
    , m_email(new WrappedText)
    , m_whyNot(new QLabel(this))
{
    makeHeadline(m_name);
    setTextColour(m_email, ColourRole::Quiet);
    setTextColour(m_whyNot, ColourRole::Warning);
    m_picture->setFixedSize(kPictureSize, kPictureSize);
    m_whyNot->setWordWrap(true);
    auto *names = new QVBoxLayout;
    names->setSpacing(4);
    names->addStretch();
    names->addWidget(m_name);
    names->addWidget(m_email);
    names->addWidget(m_whyNot);
    names->addStretch();
    auto *layout = innerLayout<QHBoxLayout>(this, 16);
    layout->addWidget(m_picture, 0, Qt::AlignTop);
    layout->addLayout(names, 1);
}

void FindingHead::showFinding(const DetailPanel &panel, const PersonItem *finding)
{
    const bool isOfPerson = finding && finding->person();
    m_name->setText(panel.name);
    m_picture->setPixmap(personPicture(
        panel.picture, kPictureSize, devicePixelRatioF(), isOfPerson ? finding->person()->uniqueId() : QString()));
    m_picture->setAccessibleName(tr("Picture of %1").arg(panel.name));
    m_email->setText(panel.email);
    m_email->setVisible(!panel.email.isEmpty());
    m_whyNot->setText(finding ? finding->whyNotFixable() : QString());
    m_whyNot->setVisible(!m_whyNot->text().isEmpty());
}
