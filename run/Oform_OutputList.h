// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "run/ReportText.h"
#include "run/ViewerScreens.h"

#include <QAbstractListModel>
#include <QMainWindow>

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

/// " HEC-1 OUTPUT": the printed report as a plain list of lines. It reads `checky.out` as `Form12` does.
class Oform : public QMainWindow, public Screen
{
    Q_OBJECT

public:
    explicit Oform(const ViewerSurroundings& around, QWidget* parent = nullptr);
    ~Oform() override;

    void showScreen() override;
    void hideScreen() override { hide(); }
    bool isScreenVisible() const override { return isVisible(); }
    void repaintScreen() override;

protected:
    bool event(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void buildMenus();
    void buildPopup();
    void readReport();
    void savehec1out();
    void editcopy();
    void zoom(bool in);
    void jump(bool toLast);

    ViewerSurroundings m_around;
    ReportText m_report;
    ReportLines m_lines;
    QListView* List1 = nullptr;
    QMenu* m_popup = nullptr;
    QAction* m_popTop = nullptr;
    QAction* m_popBottom = nullptr;
};

} // namespace kalvo
