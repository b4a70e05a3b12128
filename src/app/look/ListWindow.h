// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

class QBoxLayout;
class QPushButton;
class StatePage;
class WrappedText;

/// A window beside the main one that lists something, or says why there is nothing to list. At its foot are a message,
/// Close, and the one thing to do, if any. Esc closes it.
class ListWindow : public QWidget
{
    Q_OBJECT

public:
    QString message() const;

protected:
    ListWindow(const QString &title, QSize firstSize, QWidget *parent);

    /// @p action may be null. The sentences stand in place of empty lists.
    void setContent(QWidget *lists, QPushButton *action, const QString &emptyTitle, const QString &emptySentence);
    void setEmpty(bool isEmpty);
    /// At the foot, left of the buttons.
    void addToFoot(QWidget *widget);
    void say(const QString &text);

private:
    QWidget *m_lists = nullptr;
    QPushButton *m_action = nullptr;
    StatePage *m_empty;
    WrappedText *m_message;
    QBoxLayout *m_foot;
};
