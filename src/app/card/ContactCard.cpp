// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/card/ContactCard.h"

#include "app/card/MultiValueEditor.h"
#include "app/look/ContactPicture.h"
#include "app/look/Controls.h"
#include "app/look/FileDialog.h"
#include "base/Job.h"
#include "contacts/book/ABAddressBook.h"
#include "contacts/model/NameTexts.h"
#include "contacts/stores/open/OutsideFile.h"
#include "table/grid/BirthdayText.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileInfo>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QTextDocument>

#include <array>

namespace {

constexpr int kPictureSize = 96;

constexpr std::array kTexts{kABTitleProperty, kABFirstNameProperty, kABMiddleNameProperty, kABLastNameProperty,
    kABSuffixProperty, kABFirstNamePhoneticProperty, kABLastNamePhoneticProperty, kABMaidenNameProperty,
    kABNicknameProperty, kABOrganizationProperty, kABDepartmentProperty, kABJobTitleProperty};

constexpr std::array kMultiValues{kABEmailProperty, kABPhoneProperty, kABAddressProperty, kABURLsProperty,
    kABInstantMessageProperty, kABSocialProfileProperty, kABRelatedNamesProperty};

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
    , m_note(new QPlainTextEdit)
    , m_birthday(new QLineEdit)
    , m_isCompany(new QCheckBox(tr("Show as a company")))
    , m_picture(new QLabel)
    , m_reason(new WrappedText(Qt::LeftToRight))
{
    setWindowTitle(tr("Contact"));
    setFirstSize(*this, {620, 720});
    auto *content = new QWidget;
    auto *form = new QFormLayout(content);
    setUpHead(form);
    setUpTexts(form);
    form->addRow(makeMultiValues());
    form->addRow(propertyTitle(kABNoteProperty), m_note);
    auto *scroll = new QScrollArea;
    scroll->setWidget(content);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setFocusPolicy(Qt::NoFocus);
    QPalette colours = palette();
    colours.setColor(QPalette::Text, colours.color(QPalette::BrightText));
    m_reason->setPalette(colours);
    refuse({});
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Save | QDialogButtonBox::Cancel);
    if (ABAddressBook::isSharedReadOnly() || person->isDamaged()) {
        buttons->button(QDialogButtonBox::Save)->setEnabled(false);
        makeReadOnly(*content);
    }
    if (person->isDamaged()) {
        refuse(tr("This contact is damaged: it is not as it was saved, and cannot be edited."));
        auto *restore = buttons->addButton(tr("Restore from Backup ..."), QDialogButtonBox::ActionRole);
        restore->setEnabled(!ABAddressBook::isSharedReadOnly());
        connect(restore, &QPushButton::clicked, this, [this] {
            Q_EMIT restoreRequested(m_person->uniqueId());
            done(Rejected);
        });
    }
    connect(buttons, &QDialogButtonBox::accepted, this, &ContactCard::save);
    connect(buttons, &QDialogButtonBox::rejected, this, [this] { done(Rejected); }); // as deliberate as Save
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(scroll, 1);
    layout->addWidget(m_reason);
    layout->addWidget(buttons);
    for (const auto &[property, edit] : m_texts) { // or a button has the focus
        if (property == kABFirstNameProperty)
            edit->setFocus();
    }
}

void ContactCard::setUpHead(QFormLayout *form)
{
    const QByteArray *image = m_before->imageData();
    m_pictureData = image ? *image : QByteArray();
    m_picture->setAccessibleName(tr("Picture"));
    auto *choose = new QPushButton(tr("Choose Picture ..."));
    auto *remove = new QPushButton(tr("Remove Picture"));
    connect(choose, &QPushButton::clicked, this, &ContactCard::choosePicture);
    connect(remove, &QPushButton::clicked, this, [this] {
        m_pictureData.clear();
        showPicture();
    });
    remove->setFlat(true);
    auto *head = new QHBoxLayout;
    head->addWidget(m_picture);
    head->addWidget(choose);
    head->addWidget(remove);
    head->addStretch();
    form->addRow(head);
    showPicture();
}

void ContactCard::setUpTexts(QFormLayout *form)
{
    for (const ABProperty property : kTexts) {
        const QString *text = m_before->text(property);
        auto *edit = new QLineEdit(text ? *text : QString());
        form->addRow(propertyTitle(property), edit);
        m_texts.push_back({property, edit});
    }
    const auto birthday = m_before->birthday();
    m_birthday->setText(birthday ? birthdayText(*birthday) : QString());
    m_birthday->setPlaceholderText(QStringLiteral("1990-12-31"));
    form->addRow(propertyTitle(kABBirthdayProperty), m_birthday);
    m_isCompany->setChecked(m_before->flags().value_or(0) & kABShowAsCompany);
    form->addRow(QString(), m_isCompany);
    const QString *note = m_before->text(kABNoteProperty);
    m_note->setPlainText(note ? *note : QString());
    m_note->setTabChangesFocus(true);
    m_note->setAccessibleName(propertyTitle(kABNoteProperty));
    m_note->setMinimumHeight(80);
}

QWidget *ContactCard::makeMultiValues()
{
    auto *all = new QWidget;
    auto *layout = new QVBoxLayout(all);
    layout->setContentsMargins(0, 0, 0, 0);
    for (const ABProperty property : kMultiValues) {
        m_multiValues.push_back(new MultiValueEditor(property, m_before->multiValue(property)));
        layout->addWidget(m_multiValues.back());
    }
    return all;
}

void ContactCard::choosePicture()
{
    static QString folder = QDir::homePath(); // where the last one was
    const QStringList paths = askForFiles(this, FilesAsked::ToOpen, tr("Choose a Picture"), folder,
        tr("Pictures (*.png *.jpg *.jpeg *.gif *.bmp *.webp)"));
    if (paths.isEmpty())
        return;
    folder = QFileInfo(paths.front()).path();
    setPicture(paths.front());
}

void ContactCard::setPicture(const QString &path)
{
    const auto book = ABAddressBook::sharedAddressBook();
    const auto file = readOutsideFile(path, book ? book->file() : QString(), kLargestChosenPicture);
    if (!file) {
        refuse(file.error().text);
        return;
    }
    const auto picture = pictureToStore(*file);
    if (!picture) {
        refuse(path % QStringLiteral(": ") % picture.error().text);
        return;
    }
    m_pictureData = *picture;
    showPicture();
    refuse({});
}

void ContactCard::showPicture()
{
    m_picture->setPixmap(personPicture(m_pictureData, kPictureSize, devicePixelRatioF(), m_person->uniqueId()));
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
    record.setImageData(m_pictureData);
    return record;
}

void ContactCard::save()
{
    const auto book = ABAddressBook::sharedAddressBook();
    const auto record = edited();
    if (!record) {
        refuse(record.error().text);
        return;
    }
    if (!book || !book->containsRecord(m_person)) {
        refuse(tr("This contact was removed from the address book meanwhile."));
        return;
    }
    const PersonRecordPtr now = m_person->record();
    m_person->replaceRecord(std::make_shared<PersonRecord>(withChanges(*now, *m_before, *record)));
    Error error;
    if (!book->save(&error, makeCause(ChangeCause::Kind::Card, readableName(*record)))) {
        if (error.kind != ErrorKind::Conflict) // else the book has taken the other's record over, and it must stay
            m_person->replaceRecord(now);
        refuse(error.description());
        Q_EMIT failed(error.description());
        return;
    }
    Q_EMIT saved();
    accept();
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
