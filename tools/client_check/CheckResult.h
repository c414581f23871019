// What came of one check.
#pragma once

#include <map>
#include <string>
#include <vector>

struct CheckResult
{
    std::string m_Name;
    std::string m_What;  ///< what was done to the library
    bool m_bRun = true;  ///< false: another check's finding left nothing to do
    double m_Seconds = 0;
    std::vector<std::string> m_Findings;      ///< none: it has passed
    std::string m_Change;                     ///< what the author has to change; empty when it has passed
    std::map<std::string, double> m_Figures;  ///< that were measured

    bool HasPassed() const { return m_bRun && m_Findings.empty(); }
};
