// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "fix/PreviewDocument.h"

#include <QScrollArea>

class QLabel;

/// Draws the preview of a repair. Positions are for a small font and scale with the font in use; columns grow with
/// their texts up to the view's width. Longer texts wrap, and whatever is below moves down. What the repair adds or
/// removes has a sign and a tint.
class PreviewView : public QScrollArea
{
    Q_OBJECT

public:
    explicit PreviewView(QWidget *parent = nullptr);

    void setDocument(const PreviewDocument &document);
    /// The texts in reading order, for screen readers.
    QString spokenText() const { return m_spoken; }

protected:
    void changeEvent(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    bool event(QEvent *event) override;

private:
    void layOut();
    void showChange();
    QLabel *addLabel(QWidget &view, const PreviewField &field, int room) const;
    static void addSign(QWidget &view, const QLabel &label, QChar sign);
    int contentWidth() const;
    /// The text's width limit before it wraps.
    int roomFor(const std::vector<PreviewField> &fields, std::size_t i, double across) const;

    PreviewDocument m_document;
    QString m_spoken;
    int m_laidOutWidth = -1;
    QRect m_change; // around all changed values; null without any
};
