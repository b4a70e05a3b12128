// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

class QPushButton;
class WrappedText;

/// A sentence on a tinted ground, with a sign before it: a problem, a success, or something to know.
class Strip : public QWidget
{
    Q_OBJECT

public:
    enum class Kind { Problem, Success, Notice };

    explicit Strip(Kind kind, QWidget *parent = nullptr);

    void setText(const QString &text);
    QString text() const;
    /// At the end, without a ground.
    void addButton(QPushButton *button);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    const Kind m_kind;
    WrappedText *m_text;
};
