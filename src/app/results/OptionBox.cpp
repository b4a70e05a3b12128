// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/results/OptionBox.h"

#include "app/look/Controls.h"

#include <QButtonGroup>
#include <QGridLayout>
#include <QLabel>
#include <QRadioButton>
#include <QShortcut>

namespace {

QKeySequence keysOf(int number)
{
    return Qt::ALT | Qt::Key(Qt::Key_0 + number);
}

} // namespace

OptionBox::OptionBox(OutlineViewController &controller, QWidget *parent)
    : QGroupBox(parent), m_controller(controller), m_options(new QGridLayout(this)), m_buttons(new QButtonGroup(this))
{
    setAccessibleName(tr("Repair"));
    m_options->setColumnStretch(0, 1);
    for (int number = 1; number <= 4; ++number) { // no condition has more options
        auto *shortcut = new QShortcut(keysOf(number), this);
        connect(shortcut, &QShortcut::activated, this, [this, number] {
            if (QAbstractButton *option = m_buttons->button(number))
                option->click();
        });
    }
}

QAbstractButton *OptionBox::checkedOption() const
{
    return m_buttons->checkedButton();
}

void OptionBox::showOptions(QWidget *before, QWidget *after)
{
    const auto group = m_controller.detailPanel().optionGroup;
    if (group == m_shown)
        return;
    m_shown = group;
    qDeleteAll(findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly));
    if (!group)
        return;
    int number = 0;
    for (const QLatin1StringView title : optionGroupInfo(*group).titles) {
        auto *option = new QRadioButton(title, this);
        option->setChecked(m_controller.currentOption(*group) == title);
        m_buttons->addButton(option, ++number);
        m_options->addWidget(option, number, 0);
        auto *key = keyLabel(keysOf(number));
        m_options->addWidget(key, number, 1);
        option->setAccessibleDescription(key->text());
        setTabOrder(before, option);
        before = option;
        connect(option, &QRadioButton::clicked, this,
            [this, group, text = QString(title)] { m_controller.chooseOption(*group, text); });
    }
    setTabOrder(before, after);
}
