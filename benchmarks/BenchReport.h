// Collects rows, prints each as soon as it is there, and writes all of them as JSON.
#pragma once

#include "BenchRow.h"

#include <algorithm>

class BenchReport
{
public:
    /// @param filter rows are measured only if their name contains it.
    explicit BenchReport(std::string filter) : m_Filter(std::move(filter)) {}

    /// Asked before a row is measured.
    bool Wants(const std::string& name) const { return name.find(m_Filter) != std::string::npos; }
    /// Asked before what several rows need is made.
    bool WantsAny(const std::vector<std::string>& names) const
    {
        return std::any_of(names.begin(), names.end(), [this](const std::string& name) { return Wants(name); });
    }

    /// A ratio of times: the other's divided by ours, so that more is better.
    void AddSpeed(
        const std::string& name, double ours, const std::string& otherName, double other, double must, double aim = 0);
    /// A ratio of times: ours divided by the other's, so that less is better.
    void AddCost(
        const std::string& name, double ours, const std::string& otherName, double other, double must, double aim = 0);
    /// The same, nothing to meet.
    void AddCostFigure(const std::string& name, double ours, const std::string& otherName, double other);
    /// Frames a second: ours divided by the other's, so that more is better.
    void AddRate(
        const std::string& name, double ours, const std::string& otherName, double other, double must, double aim = 0);
    /// Nanoseconds that ours takes longer.
    void AddDifference(const std::string& name, double ours, const std::string& otherName, double other, double must);
    /// Both times side by side, nothing to meet.
    void AddFigure(const std::string& name, double ours, const std::string& otherName, double other);
    /// Bytes; the result is what ours takes more, in KiB. Nothing to meet.
    void AddMemory(const std::string& name, size_t ours, const std::string& otherName, size_t other);
    /// Any row.
    void Add(BenchRow row);

    const BenchRows& Rows() const { return m_Rows; }
    /// The closing line.
    void PrintSummary() const;
    /// @return false if the file cannot be written.
    bool WriteJson(const std::string& path) const;

private:
    std::string m_Filter;
    BenchRows m_Rows;
};
