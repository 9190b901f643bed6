#include "tools/ombrel/Program.h"

int main(int count, char** arguments)
{
    return ombrel::host::RunProgram(std::vector<std::string>(arguments + (count > 0), arguments + count));
}
