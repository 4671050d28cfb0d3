// What this process holds of the machine.
#pragma once

struct Resources
{
    double residentMiB =
        0; // without what is read from files: code that runs for the first time is no leak
    double sharedMiB = 0; // of that: with the display server
    double heapMiB = 0; // handed out by the allocator
    int descriptors = 0; // but for the next
    int processFiles = 0; // descriptors that the sampler keeps: up to two for each process
    int processes = 0; // on the whole machine
    int threads = 0;
    int onServer = 0; // see serverResources()

    static Resources now(); // after giving back what is free
};
