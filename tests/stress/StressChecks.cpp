#include "StressCheck.h"

#include "checks/CallbackFailures.h"
#include "checks/Clients.h"
#include "checks/DelegatedFailures.h"
#include "checks/Devices.h"
#include "checks/Frames.h"
#include "checks/HungClient.h"
#include "checks/Kills.h"
#include "checks/Lives.h"
#include "checks/Loads.h"
#include "checks/PlatformFailures.h"
#include "checks/RandomCalls.h"
#include "checks/Settings.h"

namespace tesslo::test
{

const std::vector<StressCheck>& StressChecks()
{
    static const std::vector<StressCheck> checks{
        {"callbacks", "each callback of the runtime's fails at each of its calls, with five codes", 0, 0,
            StressCallbackFailures},
        {"delegated",
            "each call of the delegated device fails, faults, gives nothing or too short rows, at each of its calls", 0,
            0, StressDelegatedFailures},
        {"lives", "adapter and device come and go with presents in flight", 500, 10000, StressLives},
        {"loads", "the DLL comes and goes", 200, 5000, StressLoads},
        {"devices", "two to four devices at once, each used by threads in turn", 100, 2000, StressDevices},
        {"frames", "500 frames of six sources a run, in sizes and rotations that change, arrive whole and in order",
            100, 2000, StressManyFrames},
        {"platform", "each call of the platform that the driver makes fails, from its loading to its unloading", 0, 0,
            StressPlatformFailures},
        {"random", "random calls, plausible and hostile, with memory that ends at pages without access", 200, 10000,
            StressRandomCalls},
        {"clients",
            "client libraries that lack, refuse, hang, fault, raise, end threads, call back, unload, or are none", 0, 0,
            StressClients},
        {"hung", "a client library that does not come back moves the 99th percentile of a present by 1 ms at most", 1,
            40, StressHungClient},
        {"settings", "registry values of all kinds; a log file that many write to, or that cannot be written", 0, 0,
            StressSettingsOfAllKinds},
        {"kills", "processes are ended while they present; the next one works", 20, 300, StressKills},
    };
    return checks;
}

}  // namespace tesslo::test
