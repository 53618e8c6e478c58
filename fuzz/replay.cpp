// Runs a fuzzer over a folder of saved inputs, and then over random ones which
// are the same in every run, for compilers that have no fuzzing.
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* bytes, std::size_t size);

int main(int, char** arguments)
{
    int saved = 0;
    for (const auto& entry : std::filesystem::directory_iterator(arguments[1])) {
        std::ifstream file(entry.path(), std::ios::binary);
        const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
        LLVMFuzzerTestOneInput(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
        ++saved;
    }
    const int generated = std::atoi(arguments[2]);
    std::mt19937 random;
    std::vector<unsigned char> bytes(1000);
    for (int count = 0; count < generated; ++count) {
        for (unsigned char& byte : bytes)
            byte = static_cast<unsigned char>(random());
        LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
    }
    std::printf("%d saved inputs, %d generated\n", saved, generated);
    return saved == 0 ? 1 : 0;
}
