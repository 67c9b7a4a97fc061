int main() {
    *static_cast<volatile int*>(nullptr) = 0;
}
