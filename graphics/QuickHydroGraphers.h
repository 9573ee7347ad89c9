// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Services.h"

#include <QObject>
#include <QPointer>

#include <vector>

namespace kalvo {

class FlexGrid;
class HydroGrapher;

/// The Quick HydroGraphers that stand open, any number of them, one for each selection. Those that the user closes go
/// by themselves; all are gone when this object goes.
class QuickHydroGraphers : public QObject
{
    Q_OBJECT

public:
    explicit QuickHydroGraphers(Services& services, QObject* parent = nullptr);
    ~QuickHydroGraphers() override;

    /// Opens one more on the selection of a table: row 0 labels, column 0 hours, column 1 minutes, flows in `flowUnit`.
    void open(const FlexGrid& table, const QString& flowUnit);
    void closeAll();
    /// Those still open, oldest first.
    std::vector<HydroGrapher*> hydroGraphers() const;

private:
    Services& m_services;
    std::vector<QPointer<HydroGrapher>> m_list;
    int hydroGrapherIndex = 0; ///< of the one opened next; windows are laid out a step apart by it
};

} // namespace kalvo
