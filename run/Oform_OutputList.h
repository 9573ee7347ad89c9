// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "run/ReportViewer.h"

#include <QAbstractListModel>

class QListView;
class QMenu;

namespace kalvo {

/// The lines of a report as items of a list, made when they are shown.
class ReportLines : public QAbstractListModel
{
    Q_OBJECT

public:
    using QAbstractListModel::QAbstractListModel;

    void setText(TextBuffer text);
    TextBuffer& text() { return m_text; }
    /// Room that a list leaves for its lines, in pixels across.
    void setExtent(int pixels, const QFont& font);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

private:
    TextBuffer m_text;
    QSize m_itemSize;
};

/// " HEC-1 OUTPUT": the printed report as a plain list of lines.
class Oform : public ReportViewer
{
    Q_OBJECT

public:
    explicit Oform(const ViewerSurroundings& around);
    ~Oform() override;

private:
    void buildMenus();
    void buildPopup();
    QWidget& reportControl() override;
    void loadReport() override;
    void showLines() override;
    void savehec1out();
    void editcopy();
    void zoom(bool in);
    void jump(bool toLast);

    ReportLines m_lines;
    QListView* List1 = nullptr;
    QMenu* m_popup = nullptr;
    QAction* m_popTop = nullptr;
    QAction* m_popBottom = nullptr;
};

} // namespace kalvo
