// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

class QHBoxLayout;
class QLabel;
class QPushButton;
class WrappedText;

/// What a pane shows that has nothing else to show: a drawing, what is so, and what to do.
class StatePage : public QWidget
{
    Q_OBJECT

public:
    /// data/art/DRAWING.svg.
    explicit StatePage(QString drawing, QWidget *parent = nullptr);

    void say(const QString &title, const QStringList &sentences = {});
    QString text() const;
    void addButton(QPushButton *button);

protected:
    void showEvent(QShowEvent *event) override;

private:
    QString m_drawing;
    QLabel *m_picture;
    WrappedText *m_text;
    QHBoxLayout *m_buttons;
};
