// A host root that saves its tree to a file and loads it back, with a
// version and an updater for files written by an older release.
#include <vorparameter/vorparameter.h>

#include <fstream>
#include <iostream>
#include <sstream>

// Release 1 counted passes from 0; release 2 counts them from 1.
class JobUpdater : public vorParameterUpdater {
public:
    void update(int file_version, vorParameterRoot& root) override {
        if (file_version < 2) {
            vorParameterPtr passes = root["passes"];
            passes->set_int(passes->get_int() + 1);
        }
    }
};

class JobRoot : public vorParameterLibRoot {
public:
    JobRoot()
        : vorParameterLibRoot("job") {
        add("feedrate", vorParameterPtr(new vorParameterNumeric(SUB_REAL, DIM_VELOCITY, 1200)));
        add("passes", vorParameterPtr(new vorParameterNumeric(SUB_INT, DIM_NONE, 3)));
    }
    int version() const override { return 2; }
    vorParameterUpdater* get_updater() override { return &m_updater; }

private:
    JobUpdater m_updater;
};

int main() {
    JobRoot saved;
    saved["passes"]->set_string("5");
    {
        std::ofstream out("job.vor", std::ios::binary);
        vorParameterSerializer serializer;
        if (serializer.save(saved, out) != SERIAL_OK)
            return 1;
    }

    JobRoot loaded;
    std::ifstream in("job.vor", std::ios::binary);
    vorParameterSerializer serializer;
    std::cout << "load: " << serializer.load(loaded, in) << ", passes "
              << loaded["passes"]->get_int() << "\n";

    // A file of release 1, and one with a value this root does not know.
    std::istringstream old_file(R"({"type":"job","version":"1","time":"0"}{"passes":"4"})");
    std::cout << "old file: " << serializer.load(loaded, old_file) << ", passes "
              << loaded["passes"]->get_int() << "\n";
    std::istringstream odd_file(R"({"type":"job","version":"2","time":"0"}{"spindle":"1"})");
    std::cout << "odd file: " << serializer.load(loaded, odd_file) << ", refused";
    for (const utString& key : serializer.failed_pars())
        std::cout << " " << key;
    std::cout << "\n";
}
