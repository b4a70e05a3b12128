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

struct ExportChoice
{
    QString folder;
    QString selectedButton; ///< the title of a format
    int matrix = 0; ///< the tag of the radio button for the fields
};

/// Asks for folder, format and fields; prompt "Save".
class ExportPanel
{
public:
    virtual ~ExportPanel() = default;
    /// Returns immediately or after the answer; calls @p done on the main thread at most once, with nothing if the user
    /// cancelled.
    virtual void beginSheet(std::function<void(const std::optional<ExportChoice> &)> done) = 0;
};

/// The input of an export; shares the rows, which never change.
struct ExportSource
{
    PersonRows exportArray; ///< for an export of all fields
    PersonRows tableRows; ///< for an export of the visible fields
    std::vector<Field> columns; ///< the visible ones, from the left
    int matrix = 0;
};

struct ExportOutcome
{
    QString format; ///< its title
    ExportReport report;
    qint64 rows = 0;
    qint64 milliseconds = 0;
};
Q_DECLARE_METATYPE(ExportOutcome)

/// Exports rows of the contact table in the chosen format, each export in a separate job, several in parallel if
/// necessary. Main thread unless documented otherwise.
class ExportContact : public QObject, public RowExporter
{
    Q_OBJECT

public:
    /// Tags for the choice of fields.
    static constexpr int kTableFieldsTag = 1;
    static constexpr int kAllFieldsTag = 2;

    struct Format
    {
        QString title; ///< for the user
        QString name; ///< on the command line
        QString fileName; ///< appended to the folder, with its slash; empty if the writer names its files
        ExportReport (*write)(const QString &toDesPath, const ExportSource &source);
    };
    /// In the order offered.
    static std::span<const Format> formats();

    /// @p panel must outlive this.
    explicit ExportContact(ExportPanel &panel, QObject *parent = nullptr);
    /// Waits for running exports.
    ~ExportContact() override;

    void setLoadContactsViewController(const LoadContactsViewController *controller) override;
    void setIsExportAllPeople(bool all) override { m_isExportAllPeople = all; }
    void setExportArray(PersonRows rows) override { m_exportArray = std::move(rows); }
    const PersonRows &exportArray() const { return m_exportArray; }

    /// Asks, then starts the export with the rows and columns of that moment. An unknown title or tag exports nothing.
    void startExport() override;
    /// Rows with only the visible columns, in column order.
    PersonRows copyDictionaryDataSoucre() const;
    void waitForFinished();

    // Any thread. The path is the folder, or folder and file name without extension.
    static ExportReport exportExcelToDesPath(const QString &toDesPath, const ExportSource &source);
    static ExportReport exportHtmlToDesPath(const QString &toDesPath, const ExportSource &source);
    static ExportReport exportPagesToDesPath(const QString &toDesPath, const ExportSource &source);
    static ExportReport exportNumbersToDesPath(const QString &toDesPath, const ExportSource &source);
    static ExportReport exportCsvToDesPath(const QString &toDesPath, const ExportSource &source);
    static ExportReport exportDocxToDesPath(const QString &toDesPath, const ExportSource &source);
    static ExportReport exportVcfToDesPath(const QString &toDesPath, const ExportSource &source);
    static ExportReport exportTxtToDesPath(const QString &toDesPath, const ExportSource &source);

Q_SIGNALS:
    /// Emitted on the export's thread.
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
