// Boxes of "-" and "!", 13 columns from the left, with a drawing of the program's name.
#include "job/banners.h"

#include <array>
#include <span>
#include <string>
#include <string_view>

#include "foundation/channel.h"
#include "job/console.h"

namespace zema {

namespace {

constexpr std::size_t innerWidth = 60;

constexpr std::array<std::string_view, 7> drawing = {"88888888888  88888888888  8b          d8         d8b",
                                                     "       d8P   88           888b      d888        d8P8b",
                                                     "     d8P     88           88`8b    d8`88       d8P Y8b",
                                                     "   d8P       88888888     88 `8b  d8` 88      d8P   Y8b",
                                                     " d8P         88           88  `8bd8`  88     d888888888b",
                                                     "d8P          88           88   `88`   88    d8P       Y8b",
                                                     "88888888888  88888888888  oo          oo   oo           oo"};

constexpr std::array<std::string_view, 11> capabilities = {"NONLINEAR ANALYSIS PROGRAM",
                                                           "FOR SOLIDS AND STRUCTURES",
                                                           "Program Version 4.01",
                                                           "July 2010",
                                                           "CAPABILITIES:",
                                                           "- STATIC AND DYNAMIC LOADING",
                                                           "- MATERIAL AND GEOMETRICAL NOLINEARITIES",
                                                           "- SIMPLE AND COMPOSED MATERIALS",
                                                           "- THERMO MECHANICAL COUPLED PROBLEMS",
                                                           "- SIMPLE AND COMPOSED MATERIALS",
                                                           "PLEASE WAIT WHILE THE PROGRAM WORKS"};

constexpr std::array<std::string_view, 17> scope = {"Programa de ELEMENTOS FINITOS para resolver:",
                                                    "* Problemas con no linealidad geometrica y",
                                                    "constitutiva.",
                                                    "* Problemas de fractura y localizacion de",
                                                    "deformaciones inelasticas.",
                                                    "* Problemas de materiales compuestos mediante",
                                                    "la teoria de mezclas.",
                                                    "* Problemas de anisotropia general mediante la",
                                                    "teoria se mapeo de espacios.",
                                                    "* Resuelve problemas de: Tension plana.",
                                                    "Deformacion plana.",
                                                    "Axil Simetria.",
                                                    "Barras de Timoshenko,",
                                                    "Barras articuladas.",
                                                    "* Utiliza Elementos   :  Planos  3,4,6,8 y 9 N,",
                                                    "de Timosh. 2 y 3 N,",
                                                    "articul.   2 y 3 N."};

std::string boxed(std::string_view text) {
  std::string line(13, ' ');
  line += "!  ";
  line += text;
  line.resize(13 + 3 + innerWidth, ' ');
  return line + "!";
}

std::string box(std::span<const std::string_view> lines) {
  const std::string edge = std::string(13, ' ') + std::string(innerWidth + 4, '-') + "\n";
  std::string all = edge + boxed("") + "\n";
  for (const std::string_view line : drawing) {
    all += boxed(line) + "\n";
  }
  all += boxed("") + "\n";
  for (const std::string_view line : lines) {
    all += boxed(line) + "\n";
  }
  return all + boxed("") + "\n" + edge;
}

}  // namespace

void CARTEL(const Console& console) {
  console.say(std::string(10, '\n') + box(capabilities) + "\n\n");
}

void PRESENT(Channel& channel) {
  channel.buffer() += box(scope);
  channel.commitBuffer();
}

}  // namespace zema
