// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "fix/PreviewDocument.h"

#include <QScrollArea>

/// Draws the preview of a repair. Places are given for a small font; all of them grow with the font in use, so texts
/// keep their order and are not cut off.
class PreviewView : public QScrollArea
{
    Q_OBJECT

public:
    explicit PreviewView(QWidget *parent = nullptr);

    void setDocument(const PreviewDocument &document);
    /// The texts in reading order, for those who do not see the picture.
    QString spokenText() const { return m_spoken; }

protected:
    void changeEvent(QEvent *event) override;
    bool event(QEvent *event) override;

private:
    void layOut();

    PreviewDocument m_document;
    QString m_spoken;
};
