// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/card/CardHead.h"

#include "app/look/ContactPicture.h"
#include "app/look/Controls.h"
#include "app/look/FileDialog.h"
#include "contacts/book/ABAddressBook.h"
#include "contacts/stores/open/OutsideFile.h"

#include <QBoxLayout>
#include <QDir>
#include <QFileInfo>
#include <QPushButton>

namespace {

constexpr int kPictureSize = 88;

} // namespace

CardHead::CardHead(const ABPersonPtr &person, QWidget *parent)
    : QWidget(parent)
    , m_uid(person->uniqueId())
    , m_picture(new QLabel(this))
    , m_name(new WrappedText)
    , m_quietLine(new WrappedText)
    , m_pictureData(person->imageData().value_or(QByteArray()))
{
    m_picture->setAccessibleName(tr("Picture"));
    makeHeadline(m_name);
    setTextColour(m_quietLine, ColourRole::Quiet);
    auto *texts = new QVBoxLayout;
    texts->setSpacing(4);
    texts->addWidget(m_name);
    texts->addWidget(m_quietLine);
    texts->addWidget(makeButtons());
    auto *history = new QPushButton(symbol(QStringLiteral("document-open-recent")), tr("History of This Contact"));
    history->setAutoDefault(false); // Return saves the card
    const auto book = ABAddressBook::sharedAddressBook();
    history->setVisible(book && book->containsRecord(person));
    connect(history, &QPushButton::clicked, this, &CardHead::historyRequested);
    auto *layout = innerLayout<QHBoxLayout>(this, 20);
    layout->addWidget(m_picture);
    layout->addLayout(texts, 1);
    layout->addWidget(history, 0, Qt::AlignTop);
    showPicture();
}

QWidget *CardHead::makeButtons()
{
    auto *choose = new QPushButton(tr("Choose Picture ..."));
    m_remove = new QPushButton(tr("Remove Picture"));
    m_remove->setFlat(true);
    connect(choose, &QPushButton::clicked, this, &CardHead::choosePicture);
    connect(m_remove, &QPushButton::clicked, this, [this] {
        m_pictureData.clear();
        showPicture();
    });
    auto *buttons = new QWidget;
    auto *layout = new QHBoxLayout(buttons);
    layout->setContentsMargins(0, 4, 0, 0);
    for (QPushButton *button : {choose, m_remove}) {
        button->setAutoDefault(false);
        layout->addWidget(button);
    }
    layout->addStretch();
    return buttons;
}

void CardHead::setName(const QString &name, const QString &quietLine)
{
    m_name->setText(name);
    m_quietLine->setText(quietLine);
    m_quietLine->setVisible(!quietLine.isEmpty());
}

void CardHead::choosePicture()
{
    static QString folder = QDir::homePath(); // where the last one was
    const QStringList paths = askForFiles(this, FilesAsked::ToOpen, tr("Choose a Picture"), folder,
        tr("Pictures (*.png *.jpg *.jpeg *.gif *.bmp *.webp)"));
    if (paths.isEmpty())
        return;
    folder = QFileInfo(paths.front()).path();
    Q_EMIT pictureChosen(paths.front());
}

Result<void> CardHead::setPicture(const QString &path)
{
    const auto book = ABAddressBook::sharedAddressBook();
    const auto file = readOutsideFile(path, book ? book->file() : QString(), kLargestChosenPicture);
    if (!file)
        return file.error();
    const auto picture = pictureToStore(*file);
    if (!picture)
        return Error{picture.error().kind, path % QStringLiteral(": ") % picture.error().text};
    m_pictureData = *picture;
    showPicture();
    return {};
}

void CardHead::showPicture()
{
    m_picture->setPixmap(personPicture(m_pictureData, kPictureSize, devicePixelRatioF(), m_uid));
    m_remove->setVisible(!m_pictureData.isEmpty());
}
