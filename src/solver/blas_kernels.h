// Which of its kernels the matrix library runs.
#pragma once

namespace zema {

/// Starts the program again with the kernels of 512-bit vectors where the processor has these and the library, which
/// does not know the processor, would take those of 256 bits. The library chooses once, when it is loaded. Whatever
/// OPENBLAS_CORETYPE says stays in force. arguments: those of main. Returns when there is nothing to change or the
/// system does not start the program again.
void takeWidestKernels(char** arguments);

}  // namespace zema
