// Prints the tables of a script's lines for demonstration/README.md.
#include "demonstration/script.h"

#include <iostream>

int main()
{
    std::cout << script::tables().toStdString();
    return 0;
}
