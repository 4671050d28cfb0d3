#include "fakes/ScriptedWebQuery.h"

namespace fakes {

ScriptedWebQuery &scriptedWebQuery()
{
    static ScriptedWebQuery instance;
    return instance;
}

} // namespace fakes

namespace platform {

WebQuery webQuery(WebTopic topic)
{
    auto &script = fakes::scriptedWebQuery();
    script.asked.push_back(topic);
    const auto found = script.queries.find(topic);
    return found == script.queries.end() ? WebQuery{} : found->second;
}

} // namespace platform
