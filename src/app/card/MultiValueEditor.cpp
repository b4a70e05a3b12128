// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/card/MultiValueEditor.h"

#include "app/card/FieldSection.h"
#include "app/look/CalmShapes.h"
#include "app/look/Controls.h"
#include "contacts/model/ABLabels.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QGridLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QToolButton>

#include <algorithm>

namespace {

constexpr int kChipWidth = 108;

QStringList standardLabels(ABProperty property)
{
    switch (property) {
    case kABPhoneProperty:
        return {kABPhoneMobileLabel, kABPhoneiPhoneLabel, kABPhoneHomeLabel, kABPhoneWorkLabel, kABPhoneMainLabel,
            kABPhoneHomeFAXLabel, kABPhoneWorkFAXLabel, kABPhonePagerLabel, kABOtherLabel};
    case kABURLsProperty:
        return {kABHomePageLabel, kABHomeLabel, kABWorkLabel, kABOtherLabel};
    case kABRelatedNamesProperty:
        return {kABFatherLabel, kABMotherLabel, kABParentLabel, kABBrotherLabel, kABSisterLabel, kABChildLabel,
            kABFriendLabel, kABSpouseLabel, kABPartnerLabel, kABAssistantLabel, kABManagerLabel};
    default:
        return {kABHomeLabel, kABWorkLabel, kABOtherLabel};
    }
}

/// The words of a key: "countryCode" reads "Country code".
QString titleOf(const ABKeyInfo &key)
{
    QString title;
    for (const QChar c : QString(key.name)) {
        if (c.isUpper())
            title += u' ';
        title += c.toLower();
    }
    title[0] = title[0].toUpper();
    return title;
}

} // namespace

MultiValueEditor::MultiValueEditor(ABProperty property, const ABMultiValue *value, QWidget *parent)
    : QGroupBox(propertyTitle(property), parent)
    , m_property(property)
    , m_wasPresent(value != nullptr)
    , m_layout(new QVBoxLayout(this))
    , m_add(makeAddButton(this))
{
    m_add->setText(tr("+ Add"));
    m_add->setAccessibleName(tr("Add to %1").arg(title()));
    m_layout->addWidget(m_add, 0, Qt::AlignLeft);
    connect(m_add, &QPushButton::clicked, this, &MultiValueEditor::addNew);
    if (!value)
        return;
    for (const auto &entry : value->entries())
        addRow(entry, false);
}

ABMultiValue::Entry MultiValueEditor::newEntry() const
{
    const bool isText = propertyInfo(m_property).kind == ABPropertyKind::MultiText;
    const QString label = standardLabels(m_property).front();
    return {label, isText ? ABMultiValue::Value(QString()) : ABMultiValue::Value(ABDictionary())};
}

void MultiValueEditor::addRow(const ABMultiValue::Entry &entry, bool isNew)
{
    auto *widget = new QWidget(this);
    auto *columns = innerLayout<QHBoxLayout>(widget, 8);
    Row row{widget, new QComboBox(widget), entry.label, readableLabel(entry.label), {}, {}};
    row.label->setEditable(true);
    row.label->setAccessibleName(tr("Label"));
    row.label->lineEdit()->setAccessibleName(tr("Label"));
    row.label->lineEdit()->setPlaceholderText(tr("Label"));
    for (const QString &label : standardLabels(m_property))
        row.label->addItem(readableLabel(label), label);
    row.label->setEditText(row.shownLabel);
    row.label->setProperty(kChipProperty, true);
    setTextColour(row.label->lineEdit(), ColourRole::Quiet);
    QFont bold = row.label->font();
    bold.setWeight(QFont::DemiBold);
    row.label->setFont(bold);
    row.label->setFixedWidth(scaled(kChipWidth, fontMetrics()));
    columns->addWidget(row.label, 0, Qt::AlignTop);
    auto *texts = new QGridLayout;
    if (const auto *text = std::get_if<QString>(&entry.value)) {
        texts->addWidget(addText(row, title(), text), 0, 0);
    } else {
        const auto keys = keysOfProperty(m_property);
        for (const ABKeyInfo &key : keys) {
            QLineEdit *edit = addText(row, titleOf(key), entry.dictionary().valueForKey(key.key));
            const int number = int(row.texts.size()) - 1;
            const bool isAlone = number == 0 || (number % 2 == 1 && number + 1 == int(keys.size()));
            if (isAlone) // the street, or what else comes first, and one that is left over
                texts->addWidget(edit, (number + 1) / 2, 0, 1, 2);
            else
                texts->addWidget(edit, (number + 1) / 2, (number + 1) % 2);
        }
    }
    columns->addLayout(texts, 1);
    auto *remove = new QToolButton(widget);
    remove->setIcon(symbol(QStringLiteral("window-close"), ColourRole::Quiet));
    remove->setAutoRaise(true);
    remove->setFixedHeight(row.label->sizeHint().height());
    remove->setToolTip(tr("Remove"));
    remove->setAccessibleName(tr("Remove this entry of %1").arg(title()));
    connect(remove, &QToolButton::clicked, this, [this, widget] { removeRow(widget); });
    columns->addWidget(remove, 0, Qt::AlignTop);
    m_layout->insertWidget(int(m_rows.size()), widget);
    if (isNew)
        row.texts.front()->setFocus();
    m_rows.push_back(std::move(row));
    setTabOrder(remove, m_add);
}

void MultiValueEditor::removeRow(const QWidget *widget)
{
    const auto row = std::ranges::find(m_rows, widget, &Row::widget);
    row->widget->deleteLater();
    m_rows.erase(row);
}

QLineEdit *MultiValueEditor::addText(Row &row, const QString &title, const QString *text)
{
    auto *edit = new QLineEdit(text ? *text : QString(), row.widget);
    edit->setCursorPosition(0); // or the start of a long text is out of view
    edit->setPlaceholderText(title);
    edit->setAccessibleName(title);
    row.texts.push_back(edit);
    row.before.push_back(text ? *text : QString());
    return edit;
}

QString MultiValueEditor::labelOf(const Row &row) const
{
    const QString text = row.label->currentText();
    if (text == row.shownLabel)
        return row.storedLabel;
    for (const QString &label : standardLabels(m_property)) {
        if (readableLabel(label) == text)
            return label;
    }
    return text.isEmpty() ? QString() : text;
}

ABMultiValue::Value MultiValueEditor::valueOf(const Row &row) const
{
    // A line edit shows texts of several lines in one; only what was typed into is read back.
    const auto textOf = [&row](std::size_t i) {
        return row.texts[i]->isModified() ? row.texts[i]->text() : row.before[i];
    };
    const auto keys = keysOfProperty(m_property);
    if (keys.empty())
        return textOf(0);
    ABDictionary dictionary;
    for (std::size_t i = 0; i < keys.size(); ++i) {
        const QString text = textOf(i);
        if (!text.isEmpty() || !row.before[i].isNull())
            dictionary.setValue(text, keys[i].key);
    }
    return dictionary;
}

ABValue MultiValueEditor::value() const
{
    if (m_rows.empty() && !m_wasPresent)
        return {};
    ABMutableMultiValue edited;
    for (const Row &row : m_rows)
        edited.addValue(valueOf(row), labelOf(row));
    return ABMultiValue(edited);
}
