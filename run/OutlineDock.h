// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "run/ReportOutline.h"

#include <QAbstractListModel>
#include <QBasicTimer>
#include <QDockWidget>

#include <memory>
#include <vector>

class QLineEdit;
class QListView;

namespace kalvo {

/// The entries of an outline as a list; words are made for the rows that are shown.
class OutlineModel : public QAbstractListModel
{
    Q_OBJECT

public:
    explicit OutlineModel(const TextBuffer& report, QObject* parent = nullptr);

    /// Begins anew on the report as it now stands.
    void restart();
    /// Goes on for some milliseconds. @return false when the outline is complete.
    bool readOn(qint64 milliseconds);
    /// Shows the entries alone whose words hold this text; empty: all.
    void setFilter(const QString& text);
    const OutlineEntry& entry(int row) const { return m_outline->entries()[m_rows[static_cast<size_t>(row)]]; }
    /// The last row at or ahead of a line, -1 when there is none.
    int rowOfLine(qsizetype line) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

private:
    bool isShown(const OutlineEntry& entry) const;
    std::vector<quint32> shownFrom(size_t first) const;

    const TextBuffer& m_report;
    std::unique_ptr<ReportOutline> m_outline;
    std::vector<quint32> m_rows; ///< numbers of the entries shown
    size_t m_listed = 0;         ///< entries that were looked at for the list
    QString m_filter;
};

/// Lists the stations, tables and messages of a report to jump by. The outline grows while the screen is live.
class OutlineDock : public QDockWidget
{
    Q_OBJECT

public:
    /// The report must outlive the dock; call `restart` whenever it has changed, ahead of any event.
    explicit OutlineDock(const TextBuffer& report, QWidget* parent = nullptr);
    ~OutlineDock() override;

    void restart();
    /// Marks the entry that a line belongs to.
    void follow(qsizetype line);
    bool isComplete() const { return !m_reading.isActive(); }

Q_SIGNALS:
    void lineChosen(qsizetype line);

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    void choose(const QModelIndex& index);

    OutlineModel m_model;
    QListView* m_list = nullptr;
    QLineEdit* m_filter = nullptr;
    QBasicTimer m_reading;
    bool m_isChoosing = false;
};

} // namespace kalvo
