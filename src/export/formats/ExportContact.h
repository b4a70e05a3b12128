// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Job.h"
#include "export/formats/ExportReport.h"
#include "table/grid/RowExporter.h"

#include <QObject>

#include <functional>
#include <list>
#include <span>

/// What a user chooses for an export.
struct ExportChoice
{
    QString folder;
    QString selectedButton; ///< the title of a format
    int matrix = 0; ///< which fields: the tag of the radio button
};

/// Asks for the folder, the format and the fields; prompt "Save".
class ExportPanel
{
public:
    virtual ~ExportPanel() = default;
    /// Returns at once or after the answer; @p done is called on the main thread at most once, with nothing when the
    /// user gave up.
    virtual void beginSheet(std::function<void(const std::optional<ExportChoice> &)> done) = 0;
};

/// All that an export works on; it shares the rows, which never change.
struct ExportSource
{
    PersonRows exportArray; ///< of an export of all fields
    PersonRows tableRows; ///< of an export of the shown fields
    std::vector<Field> columns; ///< the shown ones, from the left
    int matrix = 0;
};

/// How an export ended.
struct ExportOutcome
{
    QString format; ///< its title
    ExportReport report;
    qint64 rows = 0;
    qint64 milliseconds = 0;
};
Q_DECLARE_METATYPE(ExportOutcome)

/// Exports rows of the contact table in the format that the user chooses, each export in a job of its own, several
/// at once if need be. For the main thread, but where it says otherwise.
class ExportContact : public QObject, public RowExporter
{
    Q_OBJECT

public:
    /// Tags of the choice of fields.
    static constexpr int kTableFieldsTag = 1;
    static constexpr int kAllFieldsTag = 2;

    struct Format
    {
        QString title; ///< for the user, who chooses by it
        QString name; ///< for command lines
        QString fileName; ///< behind the folder, with its slash; empty where the writer names its files itself
        ExportReport (*write)(const QString &toDesPath, const ExportSource &source);
    };
    /// In the order in which they are offered.
    static std::span<const Format> formats();

    /// @p panel must outlive this.
    explicit ExportContact(ExportPanel &panel, QObject *parent = nullptr);
    /// Waits for running exports.
    ~ExportContact() override;

    void setLoadContactsViewController(const LoadContactsViewController *controller) override;
    void setIsExportAllPeople(bool all) override { m_isExportAllPeople = all; }
    void setExportArray(PersonRows rows) override { m_exportArray = std::move(rows); }
    const PersonRows &exportArray() const { return m_exportArray; }

    /// Asks, and starts the export once there is an answer: with the rows and columns of that moment. A title or tag
    /// that does not exist exports nothing.
    void startExport() override;
    /// Rows with the values of the shown columns only, in the columns' order.
    PersonRows copyDictionaryDataSoucre() const;
    void waitForFinished();

    // Any thread. The path is the folder, or the folder and the file's name without extension.
    static ExportReport exportExcelToDesPath(const QString &toDesPath, const ExportSource &source);
    static ExportReport exportHtmlToDesPath(const QString &toDesPath, const ExportSource &source);
    static ExportReport exportPagesToDesPath(const QString &toDesPath, const ExportSource &source);
    static ExportReport exportNumbersToDesPath(const QString &toDesPath, const ExportSource &source);
    static ExportReport exportCsvToDesPath(const QString &toDesPath, const ExportSource &source);
    static ExportReport exportDocxToDesPath(const QString &toDesPath, const ExportSource &source);
    static ExportReport exportVcfToDesPath(const QString &toDesPath, const ExportSource &source);
    static ExportReport exportTxtToDesPath(const QString &toDesPath, const ExportSource &source);

Q_SIGNALS:
    /// Emitted on the thread of the export.
    void exportFinished(const ExportOutcome &outcome);

private:
    ExportSource source(int matrix) const;
    void panelDidEnd(const std::optional<ExportChoice> &choice);
    void run(const Format &format, const QString &folder, const ExportSource &source);

    ExportPanel &m_panel;
    const LoadContactsViewController *m_loadContactsViewController = nullptr;
    bool m_isExportAllPeople = false;
    PersonRows m_exportArray;
    std::list<Job> m_running;
};
