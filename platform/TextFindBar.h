// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/TextBuffer.h"

#include <QBasicTimer>
#include <QWidget>

#include <vector>

class QCheckBox;
class QLabel;
class QLineEdit;

namespace kalvo {

class LargeTextView;

/// Finds in a view of a long text while the text is being typed: the next match is selected, all matches in the window
/// are marked, and it is told which of how many the selected one is. Behind the last match the first one comes.
///
/// Enter and Shift+Enter go to the next and the one before, Escape closes the bar.
class TextFindBar : public QWidget
{
    Q_OBJECT

public:
    explicit TextFindBar(LargeTextView& view, QWidget* parent = nullptr);
    ~TextFindBar() override;

    /// Shows the bar, with what is selected in the view as the text to find when that is part of one line.
    void open();
    void findNext();
    void findPrevious();
    /// The view has another text, or the text has changed.
    void restart();
    /// No more than so many matches are counted.
    static constexpr size_t kMostCounted = 10'000;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    void build();
    TextNeedle needle() const;
    void typed();
    void search(bool forward, qsizetype from);
    void count();
    void tell();

    LargeTextView& m_view;
    QLineEdit* m_text = nullptr;
    QCheckBox* m_matchCase = nullptr;
    QLabel* m_told = nullptr;
    qsizetype m_origin = 0; ///< where typing began: each further letter searches from there
    bool m_wasWrapped = false;
    std::vector<qsizetype> m_matches; ///< counted so far, in order
    qsizetype m_countedTo = 0;        ///< -1 when all are counted
    QBasicTimer m_counting;
};

} // namespace kalvo
