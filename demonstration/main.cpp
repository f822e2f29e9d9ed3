#include "app/start_up.h"
#include "demonstration/simulated_surroundings.h"

int main(int argc, char *argv[])
{
    SimulatedSurroundings surroundings;
    return runAssistant(argc, argv, surroundings);
}
