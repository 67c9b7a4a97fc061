#include <fstream>
#include <string>

// Shows that it was started: leaves a file beside itself with the number of its arguments in it.
int main(int argc, char** argv) {
    std::ofstream file(argv[0] + std::string(".started"));
    file << argc - 1;
}
