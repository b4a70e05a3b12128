// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/results/PreviewBox.h"

#include "app/compare/ComparePage.h"
#include "app/look/Controls.h"
#include "app/look/Counted.h"
#include "app/results/PreviewView.h"
#include "results/LeftBehind.h"

#include <QBoxLayout>
#include <QButtonGroup>
#include <QLabel>
#include <QPushButton>
#include <QStackedWidget>

namespace {

constexpr int kLeastHeight = 140; // where the window is low, the panel scrolls

} // namespace

PreviewBox::PreviewBox(QWidget *parent)
    : QGroupBox(parent)
    , m_previewTab(makeTab(tr("Preview")))
    , m_compareTab(makeTab(QString()))
    , m_compareButton(new QPushButton(tr("Compare and Merge ...")))
    , m_leftBehind(new ElidedLabel)
    , m_pages(new QStackedWidget)
    , m_preview(new PreviewView)
    , m_comparison(new ComparePage)
{
    setAccessibleName(tr("Preview"));
    setTextColour(m_leftBehind, ColourRole::Warning);
    m_compareButton->setFlat(true);
    m_compareButton->setAutoDefault(true); // Return presses it
    m_pages->addWidget(m_preview);
    m_pages->addWidget(m_comparison);
    m_pages->setMinimumHeight(kLeastHeight);
    auto *tabs = new QButtonGroup(this);
    auto *above = new QHBoxLayout;
    for (QPushButton *tab : {m_previewTab, m_compareTab}) {
        tabs->addButton(tab);
        above->addWidget(tab);
    }
    connect(tabs, &QButtonGroup::buttonToggled, this, &PreviewBox::showPage);
    above->addStretch();
    above->addWidget(m_compareButton);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(above);
    layout->addWidget(m_leftBehind);
    layout->addWidget(m_pages, 1);
    m_previewTab->setChecked(true);
    setPeople({});
}

QPushButton *PreviewBox::makeTab(const QString &title)
{
    auto *tab = new QPushButton(title, this);
    tab->setFlat(true);
    tab->setCheckable(true);
    tab->setAutoDefault(true);
    QFont bold = tab->font();
    bold.setWeight(QFont::DemiBold);
    tab->setFont(bold);
    return tab;
}

QWidget *PreviewBox::currentPage() const
{
    return m_pages->currentWidget();
}

void PreviewBox::setPeople(const QList<ABPersonPtr> &people)
{
    m_people = people;
    const bool areSeveral = people.size() > 1;
    m_compareTab->setText(tr("Compare %L1 Contacts").arg(people.size()));
    m_compareTab->setVisible(areSeveral);
    m_previewTab->setCheckable(areSeveral); // alone it is a title
    m_previewTab->setChecked(areSeveral && !m_compareTab->isChecked());
    m_compareButton->setVisible(areSeveral);
    showPage();
}

bool PreviewBox::compares() const
{
    return m_compareTab->isChecked() && m_people.size() > 1;
}

void PreviewBox::showPage()
{
    if (compares())
        m_comparison->showPeople(m_people);
    m_pages->setCurrentWidget(compares() ? static_cast<QWidget *>(m_comparison) : m_preview);
    Q_EMIT pageChanged();
}

void PreviewBox::setLeftBehind(const std::vector<LostValue> &values)
{
    m_leftBehind->setVisible(!values.empty());
    if (values.empty())
        return;
    const bool isOne = values.size() == 1;
    m_leftBehind->setText((isOne ? tr("%1 is left behind by this repair") : tr("%1 are left behind by this repair"))
                              .arg(counted(qint64(values.size()), tr("value"), tr("values"))));
    m_leftBehind->setToolTip(Qt::convertFromPlainText(linesOf(values)));
    m_leftBehind->setAccessibleDescription(linesOf(values));
}
