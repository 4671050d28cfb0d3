# The public services that the dashboard asks. Either may be replaced by any host that answers the same fields:
#   http://LOCATION_HOST/json          city, regionName, country
#   https://WEATHER_HOST/?format=j1    current_condition[0].temp_C, current_condition[0].weatherDesc[0].value
set(VELTRA_LOCATION_HOST ip-api.com CACHE STRING "Host (or host:port) that tells where a public address is")
set(VELTRA_WEATHER_HOST wttr.in CACHE STRING "Host (or host:port) that tells the weather")

# They become part of a command line: nothing but a name and a port.
foreach(host VELTRA_LOCATION_HOST VELTRA_WEATHER_HOST)
    if(NOT ${host} MATCHES "^[A-Za-z0-9][A-Za-z0-9.-]*(:[0-9]+)?$")
        message(FATAL_ERROR "${host} is '${${host}}', which is no host name.")
    endif()
endforeach()

# veltra_generate_web_hosts(TARGET): lets the target include "platform/WebHosts.h".
function(veltra_generate_web_hosts target)
    configure_file(${PROJECT_SOURCE_DIR}/src/platform/WebHosts.h.in
                   ${CMAKE_CURRENT_BINARY_DIR}/generated/platform/WebHosts.h @ONLY)
    target_include_directories(${target} PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/generated)
endfunction()
