#include "app/startup.h"

int main(int argc, char *argv[])
{
    return Startup::runProgram(argc, argv);
}
