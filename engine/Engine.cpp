// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/Engine.h"

#include "engine/files/DetailFiles.h"
#include "engine/files/HydrographFile.h"
#include "engine/network/JobReader.h"
#include "engine/network/NetworkRun.h"
#include "engine/report/FrontPages.h"
#include "engine/report/Messages.h"
#include "engine/report/StationReport.h"
#include "engine/report/Summary.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <ostream>
#include <stdexcept>
#include <system_error>

namespace hec1 {

namespace {

// Everything that one run writes. The report belongs to all jobs of the deck, the rest to the one that is computed.
class JobOutput : public RunListener
{
public:
    JobOutput(const Job& job, TextWriter& report, HydrographFile& tape21, HydrographFile* tape22, DetailsFile& details,
              PoolFile& pools)
        : m_stations(job, report), m_summary(job), m_tape21(tape21), m_tape22(tape22), m_details(details),
          m_pools(pools)
    {
    }

    void begin(const Station& station) override
    {
        m_stations.begin(station);
        m_tape21.begin(station);
        if (m_tape22)
            m_tape22->begin(station);
        m_details.begin(station);
    }
    void result(const Station& station, const Result& result) override
    {
        m_stations.result(station, result);
        m_tape21.record(station, result);
        if (m_tape22)
            m_tape22->record(station, result);
        m_details.record(station, result);
        m_pools.record(station, result);
        m_summary.add(station, result);
    }
    const Summary& summary() const { return m_summary; }

private:
    StationReport m_stations;
    Summary m_summary;
    HydrographFile& m_tape21;
    HydrographFile* m_tape22;
    DetailsFile& m_details;
    PoolFile& m_pools;
};

constexpr std::size_t kLeastAtOnce = 4096, kMostAtOnce = std::size_t{1} << 30;

std::optional<std::string> fileBytes(const std::string& path)
{
    std::error_code fault;
    if (std::filesystem::is_directory(path, fault))
        return std::nullopt;
    std::FILE* file = std::fopen(path.c_str(), "rb");
    if (file == nullptr)
        return std::nullopt;
    std::setvbuf(file, nullptr, _IONBF, 0);
    // One character more than the file is said to hold, so that its end shows at once; what is no plain file may tell
    // any size, so the bytes decide.
    const auto told = std::filesystem::file_size(path, fault);
    std::string bytes(fault || told > kMostAtOnce ? kLeastAtOnce : static_cast<std::size_t>(told) + 1, '\0');
    std::size_t size = 0, count = 0;
    while ((count = std::fread(bytes.data() + size, 1, bytes.size() - size, file)) > 0)
        if ((size += count) == bytes.size())
            bytes.resize(2 * size);
    bytes.resize(size);
    const bool sound = std::ferror(file) == 0;
    std::fclose(file);
    return sound ? std::optional(std::move(bytes)) : std::nullopt;
}

class EngineRun
{
public:
    EngineRun(const EngineFiles& files, std::ostream& talk) : m_files(files), m_talk(talk) {}

    EngineEnd run()
    {
        std::optional<std::string> bytes = fileBytes(m_files.input);
        if (!bytes)
            return trouble("cannot read", m_files.input);
        std::error_code fault;
        if (std::filesystem::equivalent(m_files.input, m_files.output, fault))
            return trouble("would overwrite its own input with the report:", m_files.output);
        if (!m_report.open(m_files.output))
            return trouble("cannot write", m_files.output);
        for (const char* left : {PoolFile::kName, kConicName})
            std::filesystem::remove(left, fault);
        if (!m_echo.open("TAPE23"))
            return trouble("cannot write", "TAPE23");
        writeBanner(m_report, m_stamp, true);

        DeckReader deck(std::move(*bytes));
        while (m_end == EngineEnd::Normal) {
            Diagnostics diagnostics;
            std::optional<JobCards> cards = deck.next(diagnostics);
            if (!cards || (m_jobs > 0 && !isJob(*cards)))
                break;
            if (m_jobs > 0) // of a second job; the first one's stands on the title page
                writeBanner(m_report, m_stamp, false);
            try {
                runJob(*cards, diagnostics);
            } catch (const std::invalid_argument& unsound) {
                diagnostics.error(ErrorNumber::MethodData, nullptr, capitals(unsound.what()));
                stop(diagnostics);
            } catch (const std::bad_alloc&) {
                diagnostics.error(ErrorNumber::JobTooLarge, nullptr, "");
                stop(diagnostics);
            }
            ++m_jobs;
        }
        if (m_jobs == 0)
            reportEmptyDeck();
        if (m_end == EngineEnd::Normal)
            m_report.line().line().line(kNormalEnd).line();
        return finish();
    }

private:
    // What stands behind the ZZ card of the last job is often a note.
    static bool isJob(const JobCards& cards)
    {
        for (const Card& card : cards.cards)
            if (card.is("IT"))
                return true;
        return false;
    }

    void reportEmptyDeck()
    {
        Diagnostics diagnostics;
        diagnostics.error(ErrorNumber::DeckEmpty, nullptr, "");
        writeErrors(m_report, diagnostics);
        m_end = EngineEnd::DeckErrors;
    }

    void runJob(const JobCards& cards, Diagnostics& diagnostics)
    {
        writeInputListing(m_report, cards.cards);
        writeCardEcho(cards.cards, m_echo);
        const Job job = JobReader(cards, diagnostics).read();
        if (diagnostics.hasErrors())
            return stop(diagnostics);
        if (cards.diagram)
            writeDiagram(m_report, job);
        writeJobData(m_report, job, m_stamp);
        writeWarnings(m_report, diagnostics, 0);
        const std::size_t told = diagnostics.warnings().size();

        HydrographFile tape21(job, 21), tape22(job, 22);
        const bool second = std::any_of(job.stations.begin(), job.stations.end(),
                                        [](const Station& station) { return station.save.unit == 22; });
        DetailsFile details(job);
        PoolFile pools(job);
        if (!tape21.open(m_jobs > 0))
            return failed("TAPE21");
        if (second && !tape22.open(m_jobs > 0))
            return failed("TAPE22");
        if (!m_files.details.empty() && !details.open(m_files.details, m_jobs > 0))
            return failed(m_files.details);
        if (!writeConicTables(job))
            return failed(kConicName);

        JobOutput output(job, m_report, tape21, second ? &tape22 : nullptr, details, pools);
        const bool sound = NetworkRun(job, output, diagnostics).run();
        writeWarnings(m_report, diagnostics, told);
        if (sound)
            output.summary().write(m_report);
        else
            stop(diagnostics);
        if (!(sound ? tape21.close() : tape21.discard()))
            return failed("TAPE21");
        if (second && !(sound ? tape22.close() : tape22.discard()))
            return failed("TAPE22");
        if (!details.close())
            return failed(m_files.details);
        if (!pools.close())
            return failed(PoolFile::kName);
    }

    void stop(const Diagnostics& diagnostics)
    {
        writeErrors(m_report, diagnostics);
        m_end = EngineEnd::DeckErrors;
        // A file of an earlier run must not pass for the result of this one.
        std::ofstream("TAPE21", std::ios::binary | std::ios::trunc).close();
    }

    void failed(const std::string& file)
    {
        trouble("cannot write", file);
        m_report.line().line(" *** FILE CANNOT BE WRITTEN: " + file);
    }

    EngineEnd trouble(std::string_view what, const std::string& file)
    {
        m_talk << "hec1: " << what << " '" << file << "'\n";
        m_end = EngineEnd::FileTrouble;
        return m_end;
    }

    EngineEnd finish()
    {
        if (!m_echo.close())
            trouble("cannot write", "TAPE23");
        if (!m_report.close())
            trouble("cannot write", m_files.output);
        if (m_end == EngineEnd::DeckErrors)
            m_talk << "hec1: the deck has errors; see the report '" << m_files.output << "'\n";
        return m_end;
    }

    const EngineFiles& m_files;
    std::ostream& m_talk;
    const RunStamp m_stamp = runStampNow();
    TextWriter m_report, m_echo;
    int m_jobs = 0; ///< computed so far
    EngineEnd m_end = EngineEnd::Normal;
};

} // namespace

EngineEnd computeDeck(const EngineFiles& files, std::ostream& talk)
{
    try {
        return EngineRun(files, talk).run();
    } catch (const std::bad_alloc&) {
        talk << "hec1: not enough memory for this deck\n";
    } catch (const std::exception& fault) {
        talk << "hec1: " << fault.what() << '\n';
    }
    return EngineEnd::DeckErrors;
}

} // namespace hec1
