#pragma once

#include <string>
#include <utility>
#include <vector>

class ContextProcessor;

/// Ends the stream's current command with a whole format of its own: a title and lines of a name and a value each,
/// which print as a label. Nothing happens while a format is open, since that would be lost.
void PrintReportLabel(ContextProcessor& processor, std::string const& title,
                      std::vector<std::pair<std::string, std::string>> const& lines);

/// The settings that a configuration label shows, and those of a network configuration label.
std::vector<std::pair<std::string, std::string>> ConfigurationLines(ContextProcessor const& processor);
std::vector<std::pair<std::string, std::string>> NetworkLines();
