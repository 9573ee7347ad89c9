// SPDX-License-Identifier: GPL-3.0-or-later
#include "results/ResultDesk.h"

namespace kalvo {

ResultDesk::ResultDesk(Services& services, Screens& screens, std::shared_ptr<ResultTables> tables)
    : m_services(services), m_screens(screens), m_tables(std::move(tables))
{
}

} // namespace kalvo
