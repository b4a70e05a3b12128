// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/card/FieldSection.h"

#include "app/look/CalmShapes.h"
#include "app/look/Controls.h"

#include <QFormLayout>
#include <QMenu>
#include <QStyle>

#include <algorithm>

namespace {

constexpr int kTitleWidth = 96;

} // namespace

QPushButton *makeAddButton(QWidget *parent)
{
    auto *button = new QPushButton(parent);
    button->setFlat(true);
    button->setProperty(kLinkProperty, true);
    button->setAutoDefault(false); // Return saves the card
    QFont bold = button->font();
    bold.setWeight(QFont::DemiBold);
    button->setFont(bold);
    setTextColour(button, ColourRole::Accent);
    return button;
}

FieldSection::FieldSection(const QString &title, QWidget *parent)
    : QGroupBox(title, parent), m_form(new QFormLayout), m_add(makeAddButton(this))
{
    m_form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    m_form->setLabelAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(m_form);
    layout->addWidget(m_add, 0, Qt::AlignLeft);
    connect(m_add, &QPushButton::clicked, this, &FieldSection::addHidden);
    offerHidden();
}

void FieldSection::add(const QString &title, QWidget *field, bool isShown)
{
    m_form->addRow(title, field);
    m_form->setRowVisible(field, isShown);
    QWidget *label = m_form->labelForField(field);
    label->setForegroundRole(QPalette::PlaceholderText);
    label->setMinimumSize(scaled(kTitleWidth, fontMetrics()), field->sizeHint().height());
    field->setAccessibleName(title);
    m_fields.push_back({title, field, isShown});
    setTabOrder(field, m_add);
    offerHidden();
}

void FieldSection::offerHidden()
{
    const auto isHidden = [](const Field &field) { return !field.isShown; };
    const auto count = std::ranges::count_if(m_fields, isHidden);
    m_add->setVisible(count > 0);
    m_add->setText(
        count == 1 ? tr("+ Add %1").arg(std::ranges::find_if(m_fields, isHidden)->title) : tr("+ Add Field ..."));
    m_add->setAccessibleName(tr("Add to %1").arg(title()));
}

void FieldSection::addHidden()
{
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (Field &field : m_fields) {
        if (!field.isShown)
            menu->addAction(field.title, this, [this, &field] { show(field); });
    }
    if (menu->actions().size() == 1) {
        menu->actions().front()->trigger();
        menu->deleteLater();
    } else {
        menu->popup(m_add->mapToGlobal(QPoint(0, m_add->height())));
    }
}

void FieldSection::show(Field &field)
{
    field.isShown = true;
    m_form->setRowVisible(field.widget, true);
    field.widget->setFocus();
    offerHidden();
}

void FieldSection::setError(QWidget *widget, const QString &reason)
{
    Field &field = *std::ranges::find(m_fields, widget, &Field::widget);
    if (!field.error) {
        field.error = new QLabel(this);
        field.error->setTextFormat(Qt::PlainText);
        field.error->setWordWrap(true);
        setTextColour(field.error, ColourRole::Gone);
        int row = 0;
        m_form->getWidgetPosition(widget, &row, nullptr);
        m_form->insertRow(row + 1, QString(), field.error);
    }
    field.error->setText(reason);
    m_form->setRowVisible(field.error, !reason.isEmpty());
    widget->setAccessibleDescription(reason);
    widget->setProperty(kWrongProperty, !reason.isEmpty());
    widget->update();
}
