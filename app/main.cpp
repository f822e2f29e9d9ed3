#include "app/start_up.h"
#include "app/surroundings.h"

int main(int argc, char *argv[])
{
    Surroundings none;
    return runAssistant(argc, argv, none);
}
