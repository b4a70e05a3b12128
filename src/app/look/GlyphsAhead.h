// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QStringList>
#include <QTimer>

class QWidget;

/// Has fonts and glyphs loaded that a widget will need, while nothing else is to be done. The first letter of another
/// script costs more than all the rest of a frame.
class GlyphsAhead : public QObject
{
    Q_OBJECT

public:
    /// @p widget must outlive this.
    explicit GlyphsAhead(QWidget &widget);

    /// Replaces what is not loaded yet.
    void load(const QStringList &texts);

private:
    void loadNext();

    QWidget &m_widget;
    QStringList m_texts; // the next one last
    QTimer m_timer;
};
