// Saved files in tests: their body, and the schema-less tree one loads into.
#ifndef VORPARAMETER_TESTS_SUPPORT_SAVED_FILE_H
#define VORPARAMETER_TESTS_SUPPORT_SAVED_FILE_H

#include "prelude.h"

/// Everything after the header's closing brace (the header holds no other).
/// Tests compare bodies because the header's time differs from save to save.
inline std::string saved_body(const std::string& file) {
    const std::size_t end = file.find('}');
    return end == std::string::npos ? file : file.substr(end + 1);
}

/// The body that a serializer with default settings writes for `root`.
inline std::string saved_body(const vorParameterRoot& root) {
    std::ostringstream out;
    vorParameterSerializer serializer;
    EXPECT_EQ(serializer.save(root, out), SERIAL_OK);
    return saved_body(out.str());
}

/// The tree that `file` loads into, expecting the load to give `expected`.
inline std::unique_ptr<vorParameterOpenRoot> open_saved(const std::string& file,
                                                        vorParameterSerialError expected) {
    std::istringstream in(file);
    vorParameterSerializer serializer;
    vorParameterSerialError error = SERIAL_STREAM_ERROR;
    std::unique_ptr<vorParameterOpenRoot> root = vorParameterOpenRoot::load(in, serializer, error);
    EXPECT_EQ(error, expected) << file;
    return root;
}

#endif // VORPARAMETER_TESTS_SUPPORT_SAVED_FILE_H
