// What this process holds of the machine.
#pragma once

struct Resources
{
    double residentMiB = 0;
    double heapMiB = 0; // handed out by the allocator
    int descriptors = 0; // but for the next
    int processFiles = 0; // descriptors that the sampler keeps: up to two for each process
    int processes = 0; // on the whole machine

    static Resources now(); // after giving back what is free
};
