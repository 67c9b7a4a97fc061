#include <fstream>
#include <string>

// Writes the number of its arguments to a file beside itself, to show that it was started.
int main(int argc, char** argv) {
    std::ofstream file(argv[0] + std::string(".started"));
    file << argc - 1;
}
