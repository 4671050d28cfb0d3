// The web as a test wants it: by default nobody asks it anything. Linking `veltra_scripted_web` (or the whole
// `veltra_scripted_platform`) puts it in the place of the real queries.
#pragma once

#include "platform/WebQuery.h"

#include <map>
#include <vector>

namespace fakes {

struct ScriptedWebQuery
{
    std::map<platform::WebTopic, platform::WebQuery>
        queries; // others: a program that does not start
    std::vector<platform::WebTopic> asked; // in order
};

// The one instance; assign a fresh one to start over.
ScriptedWebQuery &scriptedWebQuery();

} // namespace fakes
