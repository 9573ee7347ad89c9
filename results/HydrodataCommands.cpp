// SPDX-License-Identifier: GPL-3.0-or-later
#include "results/HydrodataCommands.h"

#include "platform/CommandGuard.h"
#include "platform/GridCopy.h"
#include "platform/text.h"

namespace kalvo {

namespace {

/// More values than these may be too much for what other programs make of a clipboard.
constexpr qint64 kManyValues = 36000;

const QString kHydrodata = QStringLiteral("hydrodata");

/// The hourglass while something long is done, whatever way it ends.
struct Waiting
{
    explicit Waiting(StatusPanels& on) : panels(on) { panels.setWaiting(true); }
    ~Waiting() { panels.setWaiting(false); }
    Waiting(const Waiting&) = delete;
    Waiting& operator=(const Waiting&) = delete;
    StatusPanels& panels;
};

} // namespace

HydrodataCommands::HydrodataCommands(std::shared_ptr<HydrodataDesk> hydrodata, Commands& commands, StatusPanels& panels,
                                     HydrodataSource source)
    : m_hydrodata(std::move(hydrodata)), m_panels(panels), m_source(std::move(source))
{
    const auto add = [this, &commands](const char* name, void (HydrodataCommands::*body)()) {
        commands.add(
            QString::fromLatin1(name), [this, body] { (this->*body)(); }, logResults);
    };
    if (m_hydrodata->desk().screens().isKnown(kHydrodata))
        add("mnu_hydrodata", &HydrodataCommands::mnu_hydrodata);
    add("mnu_CopyHydrographs", &HydrodataCommands::mnu_CopyHydrographs);
    add("center_of_mass", &HydrodataCommands::center_of_mass);
}

void HydrodataCommands::mnu_hydrodata()
{
    if (m_hydrodata->desk().holdsHydrographs() || m_source.graph())
        m_hydrodata->desk().screens().show(kHydrodata);
}

void HydrodataCommands::mnu_CopyHydrographs()
{
    if (!m_source.graph())
        return;
    FlexGrid& table = m_hydrodata->table();
    if (!mayCopy(qint64(table.rows() - 1) * (table.cols() - 1)))
        return;
    const Services& services = m_hydrodata->desk().services();
    table.select(0, 0, table.rows() - 1, table.cols() - 1);
    QString why;
    {
        const Waiting hourglass(m_panels);
        why = copySelection(table, CopyRule::AsIs, services.clipboard);
    }
    if (!why.isEmpty())
        services.dialogs.warn(why);
}

bool HydrodataCommands::mayCopy(qint64 values)
{
    if (values <= kManyValues)
        return true;
    MessageBox box;
    box.title = QStringLiteral("Copy All Hydrographs to Clipboard");
    box.buttons = Buttons::YesNo;
    box.text = QStringLiteral("The number of data points of the hydrographs you selected are ") +
               generalText(static_cast<double>(values)) + QStringLiteral(".") +
               QStringLiteral("  This large amount of data may affect you computer's clipboard memory.\r\n\r\n"
                              "Do you want to Continue Copying this data to the Clipboard?");
    return m_hydrodata->desk().services().dialogs.message(box) == Button::Yes;
}

void HydrodataCommands::center_of_mass()
{
    if (!m_source.hecRanOK() || !m_source.graph())
        return;
    Screens& screens = m_hydrodata->desk().screens();
    if (const QString graph = QStringLiteral("GRAPHER"); screens.isVisible(graph))
        screens.load(graph)->hideScreen();
    screens.load(kHydrodata);
    m_hydrodata->center_of_mass();
}

} // namespace kalvo
