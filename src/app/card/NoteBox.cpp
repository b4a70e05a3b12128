// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/card/NoteBox.h"

#include "contacts/model/ABProperties.h"

#include <QAbstractTextDocumentLayout>
#include <QBoxLayout>
#include <QPlainTextEdit>

#include <algorithm>

namespace {

constexpr int kLeastLines = 3;
constexpr int kMostLines = 12;

} // namespace

NoteBox::NoteBox(const QString *note, QWidget *parent)
    : QGroupBox(propertyTitle(kABNoteProperty), parent), m_edit(new QPlainTextEdit(note ? *note : QString()))
{
    m_edit->setTabChangesFocus(true);
    m_edit->setAccessibleName(title());
    connect(
        m_edit->document()->documentLayout(), &QAbstractTextDocumentLayout::documentSizeChanged, this, &NoteBox::fit);
    fit();
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_edit);
}

void NoteBox::fit()
{
    const int lines = std::clamp(int(m_edit->document()->size().height()), kLeastLines, kMostLines);
    const int margin = int(m_edit->document()->documentMargin());
    m_edit->setFixedHeight(lines * m_edit->fontMetrics().lineSpacing() + 2 * margin + 8);
}
