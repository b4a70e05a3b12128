// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contacts/book/ABPerson.h"
#include "fix/LostValues.h"

#include <QGroupBox>

class ComparePage;
class PreviewView;
class QLabel;
class QPushButton;
class QStackedWidget;

/// Two pages: what the repair does and, where a finding is about several contacts, these side by side.
class PreviewBox : public QGroupBox
{
    Q_OBJECT

public:
    explicit PreviewBox(QWidget *parent = nullptr);

    PreviewView *preview() const { return m_preview; }
    QWidget *currentPage() const;
    bool compares() const;
    QPushButton *compareTab() const { return m_compareTab; }
    /// Opens the window where values can be chosen.
    QPushButton *compareButton() const { return m_compareButton; }

    /// Whom the finding is about; with fewer than two there is nothing to compare.
    void setPeople(const QList<ABPersonPtr> &people);
    const QList<ABPersonPtr> &people() const { return m_people; }
    void setLeftBehind(const std::vector<LostValue> &values);

Q_SIGNALS:
    void pageChanged();

private:
    QPushButton *makeTab(const QString &title);
    void showPage();

    QList<ABPersonPtr> m_people;
    QPushButton *m_previewTab;
    QPushButton *m_compareTab;
    QPushButton *m_compareButton;
    QLabel *m_leftBehind;
    QStackedWidget *m_pages;
    PreviewView *m_preview;
    ComparePage *m_comparison;
};
