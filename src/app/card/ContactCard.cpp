// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/card/ContactCard.h"

#include "app/card/CardHead.h"
#include "app/card/FieldSection.h"
#include "app/card/MultiValueEditor.h"
#include "app/card/NoteBox.h"
#include "app/look/Controls.h"
#include "app/look/Strip.h"
#include "base/Job.h"
#include "contacts/book/ABAddressBook.h"
#include "contacts/model/NameTexts.h"
#include "table/grid/BirthdayText.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QResizeEvent>
#include <QScrollArea>

#include <algorithm>
#include <array>

namespace {

constexpr int kWideEnough = 720; // for two columns

constexpr std::array kNameTexts{kABTitleProperty, kABFirstNameProperty, kABMiddleNameProperty, kABLastNameProperty,
    kABSuffixProperty, kABFirstNamePhoneticProperty, kABLastNamePhoneticProperty, kABMaidenNameProperty,
    kABNicknameProperty};
constexpr std::array kWorkTexts{kABOrganizationProperty, kABDepartmentProperty, kABJobTitleProperty};
constexpr std::array kAlwaysShown{
    kABFirstNameProperty, kABLastNameProperty, kABEmailProperty, kABPhoneProperty, kABAddressProperty};

constexpr std::array kMultiValues{kABEmailProperty, kABPhoneProperty, kABAddressProperty, kABURLsProperty,
    kABInstantMessageProperty, kABSocialProfileProperty, kABRelatedNamesProperty};

bool isAlwaysShown(ABProperty property)
{
    return std::ranges::find(kAlwaysShown, property) != kAlwaysShown.end();
}

/// A text that was cleared becomes absent; an empty one would be a value that scans find.
void setText(PersonRecord &record, ABProperty property, const QString &text)
{
    if (text.isEmpty())
        record.removeValue(property);
    else
        record.setText(property, text);
}

/// Texts can still be copied.
void makeReadOnly(QWidget &content)
{
    for (QLineEdit *edit : content.findChildren<QLineEdit *>())
        edit->setReadOnly(true);
    for (QPlainTextEdit *edit : content.findChildren<QPlainTextEdit *>())
        edit->setReadOnly(true);
    for (QComboBox *label : content.findChildren<QComboBox *>())
        label->setEnabled(false);
    for (QAbstractButton *button : content.findChildren<QAbstractButton *>())
        button->setEnabled(false);
}

} // namespace

ContactCard::ContactCard(const ABPersonPtr &person, QWidget *parent)
    : QDialog(parent)
    , m_person(person)
    , m_before(person->record())
    , m_isNew(!person->isRemoved() && ABAddressBook::sharedAddressBook()
          && !ABAddressBook::sharedAddressBook()->containsRecord(person))
    , m_head(new CardHead(person))
    , m_noteBox(new NoteBox(m_before->text(kABNoteProperty)))
    , m_note(m_noteBox->edit())
    , m_birthday(new QLineEdit)
    , m_isCompany(new QCheckBox(tr("Company")))
    , m_reason(new Strip(Strip::Kind::Problem))
{
    setWindowTitle(m_isNew ? tr("New Contact") : tr("Contact"));
    setFirstSize(*this, {920, 780});
    auto *columns = new QWidget;
    m_columns = new QBoxLayout(QBoxLayout::LeftToRight, columns);
    m_columns->setContentsMargins(0, 0, 0, 0);
    m_columns->setSpacing(16);
    auto *content = new QWidget;
    auto *parts = new QVBoxLayout(content);
    parts->setContentsMargins(20, 20, 20, 16);
    parts->setSpacing(16);
    parts->addWidget(m_head);
    parts->addWidget(columns, 1);
    m_columns->addWidget(makeTexts(), 1);
    m_columns->addWidget(makeMultiValues(), 1);
    auto *scroll = new QScrollArea;
    scroll->setWidget(content);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setFocusPolicy(Qt::NoFocus);
    if (ABAddressBook::isSharedReadOnly() || person->isDamaged())
        makeReadOnly(*content);
    auto *foot = new QVBoxLayout;
    foot->setContentsMargins(20, 12, 20, 12);
    foot->setSpacing(12);
    foot->addWidget(m_reason);
    foot->addWidget(makeButtons());
    auto *layout = innerLayout<QVBoxLayout>(this);
    layout->addWidget(scroll, 1);
    layout->addWidget(separator(Qt::Horizontal));
    layout->addLayout(foot);
    refuse(person->isDamaged() ? tr("This contact is damaged: it is not as it was saved, and cannot be edited.")
                               : QString());
    showName();
    connect(m_head, &CardHead::pictureChosen, this, &ContactCard::setPicture);
    connect(m_head, &CardHead::historyRequested, this, [this] { Q_EMIT historyRequested(m_person); });
    for (const auto &[property, edit] : m_texts) { // or a button has the focus
        if (property == kABFirstNameProperty)
            edit->setFocus();
    }
}

void ContactCard::focusOn(const QString &text)
{
    const auto edits = findChildren<QLineEdit *>();
    const auto found = std::ranges::find(edits, text, &QLineEdit::text);
    if (found != edits.end())
        (*found)->setFocus();
}

QDialogButtonBox *ContactCard::makeButtons()
{
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Save | QDialogButtonBox::Cancel);
    auto *remove = buttons->addButton(tr("Delete Contact ..."), QDialogButtonBox::ResetRole);
    remove->setFlat(true);
    remove->setAutoDefault(false);
    remove->setProperty(kDestructiveProperty, true);
    remove->setVisible(!m_isNew && !m_person->isRemoved() && !ABAddressBook::isSharedReadOnly());
    connect(remove, &QPushButton::clicked, this, [this] {
        Q_EMIT deletionRequested(m_person);
        if (m_person->isRemoved())
            done(Rejected);
    });
    if (ABAddressBook::isSharedReadOnly() || m_person->isDamaged())
        buttons->button(QDialogButtonBox::Save)->setEnabled(false);
    if (m_person->isDamaged()) {
        auto *restore = buttons->addButton(tr("Restore from Backup ..."), QDialogButtonBox::ActionRole);
        restore->setEnabled(!ABAddressBook::isSharedReadOnly());
        connect(restore, &QPushButton::clicked, this, [this] {
            Q_EMIT restoreRequested(m_person->uniqueId());
            done(Rejected);
        });
    }
    connect(buttons, &QDialogButtonBox::accepted, this, &ContactCard::save);
    connect(buttons, &QDialogButtonBox::rejected, this, [this] { done(Rejected); }); // as deliberate as Save
    return buttons;
}

FieldSection *ContactCard::makeSection(const QString &title, std::span<const ABProperty> properties)
{
    auto *section = new FieldSection(title);
    for (const ABProperty property : properties) {
        const QString *text = m_before->text(property);
        auto *edit = new QLineEdit(text ? *text : QString());
        section->add(propertyTitle(property), edit, text || isAlwaysShown(property));
        connect(edit, &QLineEdit::textEdited, this, &ContactCard::showName);
        m_texts.push_back({property, edit});
    }
    return section;
}

QWidget *ContactCard::makeTexts()
{
    auto *all = new QWidget;
    auto *layout = innerLayout<QVBoxLayout>(all, 16);
    layout->addWidget(makeSection(tr("Name"), kNameTexts));
    FieldSection *work = makeSection(tr("Work"), kWorkTexts);
    m_isCompany->setChecked(m_before->flags().value_or(0) & kABShowAsCompany);
    work->add(tr("Kind of contact"), m_isCompany, m_isCompany->isChecked());
    layout->addWidget(work);
    layout->addWidget(makeBirthday());
    layout->addWidget(m_noteBox);
    layout->addStretch();
    return all;
}

QWidget *ContactCard::makeBirthday()
{
    const auto birthday = m_before->birthday();
    m_birthday->setText(birthday ? birthdayText(*birthday) : QString());
    m_birthday->setPlaceholderText(QStringLiteral("1990-12-31"));
    connect(m_birthday, &QLineEdit::textEdited, this, &ContactCard::judgeBirthday);
    m_dates = new FieldSection(tr("Dates"));
    m_dates->add(propertyTitle(kABBirthdayProperty), m_birthday, birthday.has_value());
    return m_dates;
}

QWidget *ContactCard::makeMultiValues()
{
    auto *all = new QWidget;
    auto *layout = innerLayout<QVBoxLayout>(all, 16);
    for (const ABProperty property : kMultiValues) {
        auto *editor = new MultiValueEditor(property, m_before->multiValue(property));
        editor->setVisible(isAlwaysShown(property) || !editor->isEmpty());
        m_multiValues.push_back(editor);
        layout->addWidget(editor);
    }
    QPushButton *add = makeAddButton(all);
    add->setText(tr("+ Add Field ..."));
    connect(add, &QPushButton::clicked, this, [this, add] { offerMultiValues(add); });
    layout->addWidget(add, 0, Qt::AlignLeft);
    layout->addStretch();
    return all;
}

void ContactCard::offerMultiValues(QPushButton *add)
{
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (MultiValueEditor *editor : m_multiValues) {
        menu->addAction(editor->title(), this, [editor] {
            editor->show();
            editor->addNew();
        });
    }
    menu->popup(add->mapToGlobal(QPoint(0, add->height())));
}

void ContactCard::showName()
{
    PersonRecord record = *m_before;
    applyTexts(record);
    const QString name = readableName(record);
    const auto textOf = [&record](
                            ABProperty property) { return record.text(property) ? *record.text(property) : QString(); };
    const QString job = textOf(kABJobTitleProperty);
    m_head->setName(name.isEmpty() ? tr("No name") : name, job.isEmpty() ? textOf(kABOrganizationProperty) : job);
}

void ContactCard::judgeBirthday()
{
    const QString text = m_birthday->text().trimmed();
    const auto date = birthdayFromText(text, QLocale(), QDate::currentDate());
    m_dates->setError(m_birthday, date || text.isEmpty() ? QString() : date.error().text);
}

void ContactCard::resizeEvent(QResizeEvent *event)
{
    m_columns->setDirection(event->size().width() < kWideEnough ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
    QDialog::resizeEvent(event);
}

void ContactCard::setPicture(const QString &path)
{
    const auto done = m_head->setPicture(path);
    refuse(done ? QString() : done.error().text);
}

void ContactCard::refuse(const QString &reason)
{
    m_reason->setText(reason);
    m_reason->setVisible(!reason.isEmpty());
}

void ContactCard::applyTexts(PersonRecord &record) const
{
    // Editors show line breaks in their own way; only what was typed into is read back.
    for (const auto &[property, edit] : m_texts) {
        if (edit->isModified())
            setText(record, property, edit->text());
    }
    if (m_note->document()->isModified())
        setText(record, kABNoteProperty, m_note->toPlainText());
}

Result<PersonRecord> ContactCard::edited() const
{
    PersonRecord record = *m_before;
    applyTexts(record);
    const QString birthday = m_birthday->text().trimmed();
    if (birthday.isEmpty()) {
        record.removeValue(kABBirthdayProperty);
    } else {
        const auto date = birthdayFromText(birthday, QLocale(), QDate::currentDate());
        if (!date)
            return date.error();
        record.setBirthday(*date);
    }
    const bool wasCompany = m_before->flags().value_or(0) & kABShowAsCompany;
    if (m_isCompany->isChecked() != wasCompany)
        record.setFlags(m_before->flags().value_or(0) ^ kABShowAsCompany);
    for (const MultiValueEditor *editor : m_multiValues) {
        const ABValue value = editor->value();
        if (!std::holds_alternative<std::monostate>(value))
            record.setValue(editor->property(), value);
    }
    record.setImageData(m_head->picture());
    return record;
}

void ContactCard::save()
{
    const auto book = ABAddressBook::sharedAddressBook();
    const auto record = edited();
    if (!record) {
        judgeBirthday();
        m_birthday->setFocus();
        refuse(record.error().text);
        return;
    }
    if (m_isNew && book) {
        saveNew(*book, *record);
        return;
    }
    if (!book || !book->containsRecord(m_person)) {
        refuse(tr("This contact has since been removed from the address book."));
        return;
    }
    const PersonRecordPtr now = m_person->record();
    m_person->replaceRecord(std::make_shared<PersonRecord>(withChanges(*now, *m_before, *record)));
    Error error;
    if (!book->save(&error, makeCause(ChangeCause::Kind::Card, readableName(*record)))) {
        if (error.kind != ErrorKind::Conflict) // else the book has taken the other's record over, and it must stay
            m_person->replaceRecord(now);
        refuseSave(error);
        return;
    }
    Q_EMIT saved(m_person->uniqueId());
    accept();
}

/// Adds a contact, unless it would have no value.
void ContactCard::saveNew(ABAddressBook &book, const PersonRecord &record)
{
    if (record == *m_before) {
        accept();
        return;
    }
    const auto person = std::make_shared<ABPerson>(); // for every attempt another, as a failed one is removed
    person->replaceRecord(std::make_shared<PersonRecord>(record));
    Error error;
    if (!book.addRecord(person, &error)
        || !book.save(&error, makeCause(ChangeCause::Kind::Card, readableName(record)))) {
        book.removeRecord(person); // or the next save would write it
        refuseSave(error);
        return;
    }
    Q_EMIT saved(person->uniqueId());
    accept();
}

void ContactCard::refuseSave(const Error &error)
{
    refuse(error.description());
    Q_EMIT failed(error.description());
}

bool ContactCard::isEdited() const
{
    const auto record = edited();
    return !record || !(*record == *m_before);
}

void ContactCard::reject()
{
    if (!isEdited()) {
        QDialog::reject();
        return;
    }
    QMessageBox question(QMessageBox::Question, windowTitle(), tr("Save what you changed in this contact?"),
        QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, this);
    question.setDefaultButton(QMessageBox::Save);
    const Job::Hold hold;
    switch (question.exec()) {
    case QMessageBox::Save:
        save();
        break;
    case QMessageBox::Discard:
        QDialog::reject();
        break;
    default:
        break;
    }
}
