// SPDX-License-Identifier: GPL-3.0-or-later
#include "results/ResultDesk.h"

#include "run/BatchTables.h"
#include "run/RunFolder.h"

namespace kalvo {

ResultDesk::ResultDesk(Services& services, Screens& screens, std::shared_ptr<ResultTables> tables)
    : m_services(services), m_screens(screens), m_tables(std::move(tables))
{
    connect(m_tables.get(), &ResultTables::changed, this, [this] { m_isMetric.reset(); });
}

bool ResultDesk::holdsHydrographs() const
{
    // The time columns are filled last, and only when every hydrograph was read.
    const FlexGrid& table = m_tables->hydrographTable;
    return table.rows() > 0 && table.cols() > 0 && !table.textMatrix(0, 0).isEmpty();
}

bool ResultDesk::isMetric() const
{
    // The deck lies beside its results as it ran; the one in the editor may be another by now.
    if (!m_isMetric) {
        const QByteArray deck = readFile(RunFolder(m_services.folder).file(RunFolder::kDeck)).value_or(QByteArray());
        m_isMetric = unitsOfDeck(std::string_view(deck.constData(), static_cast<size_t>(deck.size()))).isMetric;
    }
    return *m_isMetric;
}

QString ResultDesk::flowUnit() const
{
    return QString::fromLatin1(DeckUnits{isMetric()}.flow());
}

} // namespace kalvo
