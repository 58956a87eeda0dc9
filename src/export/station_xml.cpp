// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/station_xml.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <pugixml.hpp>
#include <sstream>

#include "base/number_text.h"

namespace orvane {
namespace {

constexpr double kDivisor = 20;

std::string TimeText(std::int64_t microseconds) {
  constexpr std::int64_t kSecond = 1000000;
  const std::time_t seconds = microseconds / kSecond;
  std::tm parts{};
  gmtime_r(&seconds, &parts);
  std::array<char, 64> text{};
  std::snprintf(text.data(), text.size(), "%04d-%02d-%02dT%02d:%02d:%02d.%06dZ",
                parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday, parts.tm_hour, parts.tm_min,
                parts.tm_sec, static_cast<int>(microseconds % kSecond));
  return text.data();
}

void AddText(pugi::xml_node to, const char* name, const std::string& text) {
  to.append_child(name).text().set(text.c_str());
}

void AddReal(pugi::xml_node to, const char* name, double value) {
  AddText(to, name, FormatRealExactly(value));
}

void AddUnits(pugi::xml_node to, const std::string& unit) {
  AddText(to.append_child("InputUnits"), "Name", unit);
  AddText(to.append_child("OutputUnits"), "Name", "count");
}

void AddGain(pugi::xml_node to, const ChannelResponse::Point& at) {
  AddReal(to, "Value", at.amplitude);
  AddReal(to, "Frequency", at.frequency);
}

void AddResponse(pugi::xml_node channel, const ChannelResponse& response, double rate) {
  const double wanted = ReferenceFrequency(rate);
  const auto reference = *std::min_element(
      response.points.begin(), response.points.end(), [wanted](const auto& a, const auto& b) {
        return std::abs(std::log(a.frequency / wanted)) < std::abs(std::log(b.frequency / wanted));
      });
  pugi::xml_node all = channel.append_child("Response");
  pugi::xml_node sensitivity = all.append_child("InstrumentSensitivity");
  AddGain(sensitivity, reference);
  AddUnits(sensitivity, response.unit);
  pugi::xml_node stage = all.append_child("Stage");
  stage.append_attribute("number") = 1;
  pugi::xml_node list = stage.append_child("ResponseList");
  AddUnits(list, response.unit);
  for (const ChannelResponse::Point& point : response.points) {
    pugi::xml_node element = list.append_child("ResponseListElement");
    AddReal(element, "Frequency", point.frequency);
    AddReal(element, "Amplitude", point.amplitude / reference.amplitude);
    AddReal(element, "Phase", point.phase);
  }
  AddGain(stage.append_child("StageGain"), reference);
}

void AddPlace(pugi::xml_node to, const Station& station) {
  AddReal(to, "Latitude", station.latitude);
  AddReal(to, "Longitude", station.longitude);
  AddReal(to, "Elevation", station.elevation);
}

void AddChannel(pugi::xml_node to, const Station& station, const StationChannel& channel) {
  pugi::xml_node node = to.append_child("Channel");
  node.append_attribute("code") = channel.name.code.c_str();
  node.append_attribute("locationCode") = channel.name.location.c_str();
  node.append_attribute("startDate") = TimeText(channel.begin).c_str();
  node.append_attribute("endDate") = TimeText(channel.end).c_str();
  AddText(node, "Description", channel.definition);
  AddPlace(node, station);
  AddReal(node, "Depth", 0);
  if (channel.name.direction.azimuth) {
    AddReal(node, "Azimuth", *channel.name.direction.azimuth);
    AddReal(node, "Dip", channel.name.direction.dip);
  }
  AddReal(node, "SampleRate", channel.rate);
  if (!channel.response.points.empty()) {
    AddResponse(node, channel.response, channel.rate);
  }
}

}  // namespace

double ReferenceFrequency(double rate) {
  return std::pow(10, std::floor(std::log10(rate / kDivisor) + 1e-9));
}

std::string StationXml(const Station& station) {
  const auto [first, last] =
      std::minmax_element(station.channels.begin(), station.channels.end(),
                          [](const auto& a, const auto& b) { return a.begin < b.begin; });
  static_cast<void>(last);
  pugi::xml_document document;
  pugi::xml_node declaration = document.append_child(pugi::node_declaration);
  declaration.append_attribute("version") = "1.0";
  declaration.append_attribute("encoding") = "UTF-8";
  pugi::xml_node root = document.append_child("FDSNStationXML");
  root.append_attribute("xmlns") = "http://www.fdsn.org/xml/station/1";
  root.append_attribute("schemaVersion") = "1.1";
  AddText(root, "Source", "Orvane");
  AddText(root, "Module", "Orvane " ORVANE_VERSION);
  AddText(root, "Created", TimeText(first->begin));
  pugi::xml_node network = root.append_child("Network");
  network.append_attribute("code") = station.network.c_str();
  pugi::xml_node node = network.append_child("Station");
  node.append_attribute("code") = station.code.c_str();
  AddPlace(node, station);
  AddText(node.append_child("Site"), "Name", station.site);
  for (const StationChannel& channel : station.channels) {
    AddChannel(node, station, channel);
  }
  std::ostringstream text;
  document.save(text, "  ");
  return text.str();
}

}  // namespace orvane
