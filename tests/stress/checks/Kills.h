// Processes that are ended while they present leave nothing that the next one trips over.
#pragma once

#include <string>

namespace tesslo::test
{

class StressRun;

void StressKills(StressRun& run);

/// A process that presents to a slow client library, life after life, until somebody ends it.
/// @param name of the event that it sets when it presents; also decides how it does so.
void StressPresenter(const std::string& name);

}  // namespace tesslo::test
