extern "C" int decodeOne();

int main() { return decodeOne(); }
