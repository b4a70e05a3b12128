// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStyledItemDelegate>

#include <functional>

/// The cells of the contact table and their editors.
class CellDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    /// Why a cell refuses a text; null if it accepts it.
    using Refusal = std::function<QString(const QModelIndex &cell, const QString &text)>;

    explicit CellDelegate(QObject *parent = nullptr, Refusal refusal = {});

    QString displayText(const QVariant &value, const QLocale &locale) const override;
    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    void setEditorData(QWidget *editor, const QModelIndex &index) const override;
    /// An editor with unchanged text changes nothing.
    void setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const override;

    /// Says what does not fit into its cell.
    bool helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
        const QModelIndex &index) override;

Q_SIGNALS:
    void editorOpened(QWidget *editor) const;
    /// The editor stays open with the refused text.
    void refused(const QModelIndex &cell, const QString &reason);

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    Refusal m_refusal;
    mutable QPersistentModelIndex m_cell; // of the newest editor
    mutable QString m_opened; // its initial text
};
