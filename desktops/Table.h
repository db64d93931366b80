// The table of gestures and window managers in a document, between two comments.
#pragma once

#include "Gestures.h"

#include <map>
#include <string>
#include <vector>

namespace klova::desktops {

/// What came of each gesture, by the name of the manager.
using Results = std::map<std::string, std::vector<Finding>>;

/// In Markdown, with its notes.
std::string tableOf(const std::vector<std::string>& managers, const Results& results);

/// `document` with `table` between its two comments. Throws std::runtime_error where it has none.
std::string withTable(const std::string& document, const std::string& table);

/// The cells of the manager in the document's table, from top to bottom; none where it has no such
/// column.
std::vector<std::string> cellsOf(const std::string& document, const std::string& manager);

/// What the table says of a finding.
std::string cellOf(const Finding& finding);

} // namespace klova::desktops
