#include "app/startup.h"

using namespace tarvel4;

int main(int argc, char *argv[])
{
    return Startup::runProgram(argc, argv);
}
