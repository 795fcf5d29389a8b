// Shares a tree between threads the one way the library allows: every call
// into the library, from whichever thread, holds the same lock.
#include <vorparameter/vorparameter.h>

#include <iostream>
#include <mutex>
#include <thread>
#include <vector>

// One lock for the library, not one per tree: keys, the function table and
// the evaluator's counters are shared by every tree of the process.
std::mutex library_lock;

int main() {
    vorParameterLibRoot root("machining");
    vorParameterPtr diameter =
        root.add("diameter", vorParameterPtr(new vorParameterNumeric(SUB_REAL, DIM_LENGTH, 6)));
    vorParameterPtr radius =
        root.add("radius", vorParameterPtr(new vorParameterNumeric(SUB_REAL, DIM_LENGTH, 0)));
    radius->set_string("diameter / 2");

    std::vector<double> reads(4);
    std::vector<std::thread> workers;
    for (std::size_t i = 0; i < reads.size(); ++i)
        workers.emplace_back([&reads, i, radius] { // copying a handle needs no lock
            std::lock_guard<std::mutex> hold(library_lock);
            reads[i] = radius->get_double();
        });
    {
        std::lock_guard<std::mutex> hold(library_lock);
        diameter->set_double(8);
    }
    for (std::thread& worker : workers)
        worker.join();

    bool consistent = true;
    for (double read : reads)
        consistent = consistent && (read == 3 || read == 4);
    std::cout << "every read saw a whole tree: " << (consistent ? "yes" : "no") << "\n";
    return consistent ? 0 : 1;
}
