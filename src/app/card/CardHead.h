// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/book/ABPerson.h"

#include <QWidget>

class QLabel;
class QPushButton;
class WrappedText;

/// The head of a card: the picture, which can be changed, and whom the card is about.
class CardHead : public QWidget
{
    Q_OBJECT

public:
    explicit CardHead(const ABPersonPtr &person, QWidget *parent = nullptr);

    /// With a quiet line below the name.
    void setName(const QString &name, const QString &quietLine);
    /// Uses the picture in this file; an error says why not.
    Result<void> setPicture(const QString &path);
    const QByteArray &picture() const { return m_pictureData; }

Q_SIGNALS:
    void pictureChosen(const QString &path);
    void historyRequested();

private:
    QWidget *makeButtons();
    void choosePicture();
    void showPicture();

    const QString m_uid;
    QLabel *m_picture;
    QPushButton *m_remove = nullptr;
    WrappedText *m_name;
    WrappedText *m_quietLine;
    QByteArray m_pictureData;
};
