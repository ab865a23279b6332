// Reads the coordinates and echoes them by pairs of nodes.
#include "input/coordinate_cards.h"

#include <array>
#include <span>
#include <string_view>

#include "input/deck_echo.h"
#include "job/job.h"

namespace zema {

namespace {

constexpr Layout nodeColumns("3X I6 3E10.3");

void writeHeading(Channel& listing, int dimensions) {
  static constexpr Layout section(R"(/ 6X "COORDINATES DEFINITION :" / 6X 24("-") /)");
  static constexpr Layout columns(R"(5X " NODE" 3(2X A))");
  static constexpr std::array<std::string_view, 3> axes{"X-COORD", "Y-COORD", "Z-COORD"};
  const auto names = std::span(axes).first(static_cast<std::size_t>(dimensions));
  listing.write(section);
  columns.append(listing.buffer(), names);
  listing.buffer().append(8, ' ');
  listing.write(columns, names);
}

/// The table by pairs of nodes. With an odd number of nodes it shows one row past the last, which lies at the origin.
void echo(Channel& listing, const Mesh& mesh) {
  const std::array<double, 3> origin{};
  const auto pastLast = std::span(origin).first(static_cast<std::size_t>(mesh.dimensions));
  writeHeading(listing, mesh.dimensions);
  for (int n = 1; n <= mesh.NPOIN(); n += 2) {
    nodeColumns.append(listing.buffer(), n, mesh.coordinates({n}));
    listing.buffer().append(4, ' ');
    listing.write(nodeColumns, n + 1, n < mesh.NPOIN() ? mesh.coordinates({n + 1}) : pastLast);
  }
}

}  // namespace

void readCoordinates(Job& job, Model& model) {
  Mesh& mesh = model.mesh;
  CardReader& cards = job.cards();
  const auto dimensions = static_cast<std::size_t>(mesh.dimensions);
  mesh.COORD.assign(static_cast<std::size_t>(mesh.NPOIN()) * dimensions, 0.0);
  for (int card = 0; card < mesh.NPOIN(); ++card) {
    cards.begin("coordinate");
    const int node = cards.integer("node number", 1, mesh.NPOIN());
    for (std::size_t i = 0; i < dimensions; ++i) {
      mesh.COORD[static_cast<std::size_t>(node - 1) * dimensions + i] = cards.real("coordinate");
    }
  }
  if (echoesModelCards(model)) {
    echo(job.listing(), mesh);
  }
  if (feedsFrequencyRecords(job)) {
    Channel& records = job.channels[channel::frequencies];
    for (int n = 1; n <= mesh.NPOIN(); ++n) {
      records.write(nodeColumns, n, mesh.coordinates({n}));
    }
  }
}

}  // namespace zema
