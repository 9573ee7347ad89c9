// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/network/CardTables.h"
#include "engine/network/JobModel.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace hec1 {

/// A pattern sampled once and shared by all stations that use it.
struct RainPattern
{
    std::shared_ptr<const std::vector<double>> shape;
    double total = 0; ///< of the whole pattern, also outside the run
    const Card* card = nullptr;
};

/// PG with its PI or PC.
struct Gage
{
    std::string name;
    double total = 0;
    double normalAnnual = 0;
    std::optional<RainPattern> pattern; ///< of a recording gage
    const Card* card = nullptr;
};

/// The rain that is in force: carried from station to station until it is replaced.
class RainState
{
public:
    bool given() const { return m_kind != Kind::None; }

    void setStorm(const Card& pb);
    void setPattern(RainPattern pattern);
    void setPatternGages(const Card& pr, std::vector<std::string> names);
    void setTotalGages(const Card& pt, std::vector<std::string> names);
    void setWeights(ValueList pw, Diagnostics& diagnostics);
    void setHypothetical(const Card& ph, const Card* longer);
    void setProbableMaximum(const Card& pm);
    void setStandardProject(const Card& ps);
    /// Tells that a new station begins: a PR without a PT then has no totals left over.
    void beginStation() { m_prHere = m_ptHere = false; }

    /// Rain over a subbasin. Empty, with an error, when it cannot be told.
    std::optional<RainInput> rainOf(const Card& station, double area, double normalAnnual,
                                    const std::map<std::string, Gage>& gages, const RunTime& time,
                                    const methods::UnitSystem& units, Diagnostics& diagnostics);
    std::vector<const Card*> cards() const;

private:
    enum class Kind
    {
        None,
        Pattern,
        Gages,
        Hypothetical,
        ProbableMaximum,
        StandardProject
    };
    struct GageChoice
    {
        const Card* card = nullptr;
        std::vector<std::string> names;
        ValueList weights;
    };
    std::optional<RainInput> weighted(double normalAnnual, const std::map<std::string, Gage>& gages,
                                      const RunTime& time, Diagnostics& diagnostics) const;
    std::optional<RainInput> synthetic(double area, const RunTime& time, const methods::UnitSystem& units) const;
    static std::vector<const Gage*> find(const GageChoice& choice, const std::map<std::string, Gage>& gages,
                                         Diagnostics& diagnostics);

    Kind m_kind = Kind::None;
    double m_storm = 0;
    const Card* m_stormCard = nullptr;
    std::optional<RainPattern> m_pattern;
    GageChoice m_pr, m_pt;
    bool m_lastWasPt = false, m_prHere = false, m_ptHere = false;
    const Card* m_special = nullptr; ///< PH, PM or PS
    methods::HypotheticalStorm m_hypothetical;
    methods::ProbableMaximumStorm m_maximum;
    methods::StandardProjectStorm m_project;
    double m_cachedArea = -1; ///< of m_cached, which serves all subbasins when the card gives the storm area
    std::optional<RainInput> m_cached;
};

/// Samples PI or PC values at the interval of the run. Reports a mass curve that falls and a pattern of which part lies
/// outside the run. Empty after an error.
std::optional<RainPattern> samplePattern(const ValueList& values, bool cumulative, const RunTime& time,
                                         Diagnostics& diagnostics);

} // namespace hec1
