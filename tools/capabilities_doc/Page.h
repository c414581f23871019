// A page of text with tables that a program writes: each stands between "<!-- table: NAME -->" and "<!-- end -->".
#pragma once

#include <map>
#include <string>

/// Puts the tables into the page, in place of what stands between their marks.
/// @param error receives one line when the page lacks a table's marks; then the page is given back as it was.
std::string WithTables(const std::string& page, const std::map<std::string, std::string>& tables, std::string& error);

/// Number of the first line in which two texts differ, 0 when they are equal.
unsigned FirstDifference(const std::string& one, const std::string& other);
