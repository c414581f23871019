#include "BenchReport.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstdio>
#include <fstream>

namespace
{
constexpr double kMicroseconds = 1e6;
constexpr double kNanoseconds = 1e9;
constexpr double kKibibyte = 1024;

const char* Sign(BenchTarget kind)
{
    return kind == BenchTarget::AtLeast ? ">=" : "<=";
}

std::string TargetText(const BenchRow& row)
{
    if (row.Kind == BenchTarget::None)
        return "";
    char text[48];
    if (row.Aim > 0)
        std::snprintf(text, sizeof(text), "%s %.2f (%.2f)", Sign(row.Kind), row.Must, row.Aim);
    else
        std::snprintf(text, sizeof(text), "%s %.2f", Sign(row.Kind), row.Must);
    return text;
}

const char* Verdict(const BenchRow& row)
{
    if (row.Kind == BenchTarget::None)
        return "";
    if (!row.IsMet())
        return "NOT MET";
    if (row.Aim > 0)
        return (row.Kind == BenchTarget::AtLeast ? row.Result >= row.Aim : row.Result <= row.Aim) ? "met, aim too"
                                                                                                  : "met";
    return "met";
}

void Print(const BenchRow& row)
{
    std::printf("%-40s %10.1f %-3s %10.1f %-16s %7.2f  %-16s %s\n", row.Name.c_str(), row.Ours, row.Unit.c_str(),
        row.Other, row.OtherName.c_str(), row.Result, TargetText(row).c_str(), Verdict(row));
    std::fflush(stdout);
}
}  // namespace

void BenchReport::Add(BenchRow row)
{
    if (m_Rows.empty())
        std::printf("%-40s %14s %10s %-16s %7s  %-16s %s\n", "what", "ours", "other", "is", "result", "must (aim)", "");
    Print(row);
    m_Rows.push_back(std::move(row));
}

void BenchReport::AddSpeed(
    const std::string& name, double ours, const std::string& otherName, double other, double must, double aim)
{
    Add({name, "us", ours * kMicroseconds, otherName, other * kMicroseconds, other / ours, BenchTarget::AtLeast, must,
        aim});
}

void BenchReport::AddCost(
    const std::string& name, double ours, const std::string& otherName, double other, double must, double aim)
{
    Add({name, "us", ours * kMicroseconds, otherName, other * kMicroseconds, ours / other, BenchTarget::AtMost, must,
        aim});
}

void BenchReport::AddCostFigure(const std::string& name, double ours, const std::string& otherName, double other)
{
    Add({name, "us", ours * kMicroseconds, otherName, other * kMicroseconds, ours / other, BenchTarget::None});
}

void BenchReport::AddRate(
    const std::string& name, double ours, const std::string& otherName, double other, double must, double aim)
{
    Add({name, "fps", ours, otherName, other, ours / other, BenchTarget::AtLeast, must, aim});
}

void BenchReport::AddDifference(
    const std::string& name, double ours, const std::string& otherName, double other, double must)
{
    Add({name, "ns", ours * kNanoseconds, otherName, other * kNanoseconds, (ours - other) * kNanoseconds,
        BenchTarget::AtMost, must});
}

void BenchReport::AddMemory(const std::string& name, size_t ours, const std::string& otherName, size_t other)
{
    const double left = static_cast<double>(ours) / kKibibyte, right = static_cast<double>(other) / kKibibyte;
    Add({name, "KiB", left, otherName, right, left - right, BenchTarget::None});
}

void BenchReport::AddFigure(const std::string& name, double ours, const std::string& otherName, double other)
{
    Add({name, "ns", ours * kNanoseconds, otherName, other * kNanoseconds, ours / other, BenchTarget::None});
}

void BenchReport::PrintSummary() const
{
    const auto counted = [this](auto test) { return std::count_if(m_Rows.begin(), m_Rows.end(), test); };
    const auto targets = counted([](const BenchRow& row) { return row.Kind != BenchTarget::None; });
    const auto missed = counted([](const BenchRow& row) { return !row.IsMet(); });
    std::printf("%d rows, %d targets, %d not met\n", static_cast<int>(m_Rows.size()), static_cast<int>(targets),
        static_cast<int>(missed));
}

bool BenchReport::WriteJson(const std::string& path) const
{
    nlohmann::ordered_json rows = nlohmann::ordered_json::array();
    for (const BenchRow& row : m_Rows)
    {
        nlohmann::ordered_json entry = {{"name", row.Name}, {"unit", row.Unit}, {"ours", row.Ours},
            {"other", row.OtherName}, {"otherValue", row.Other}, {"result", row.Result}};
        if (row.Kind != BenchTarget::None)
        {
            entry["target"] = Sign(row.Kind);
            entry["must"] = row.Must;
            entry["met"] = row.IsMet();
            if (row.Aim > 0)
                entry["aim"] = row.Aim;
        }
        rows.push_back(std::move(entry));
    }
    std::ofstream file(path);
    file << rows.dump(2) << '\n';
    return file.good();
}
