// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace hec1 {

/// A hydrograph that an earlier job has saved on unit 21 or 22.
struct SavedHydrograph
{
    int minutes = 0;
    std::vector<double> flows; ///< the first record of the station: plan 1, ratio 1
};

/// Reads a station from TAPE21 or TAPE22 of the current folder. Must be called before the job opens that file for
/// writing. Empty when the file or the station is not there.
std::optional<SavedHydrograph> readSavedHydrograph(int unit, const std::string& station);

} // namespace hec1
