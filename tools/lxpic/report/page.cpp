// SPDX-License-Identifier: Apache-2.0
#include "tools/lxpic/report/page.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <numeric>
#include <sstream>

#include "tools/lxpic/file/output_file.h"

namespace lx::tool {

namespace {

constexpr const char* kHead = R"(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>Inspection against a golden sample</title>
<style>
  :root { --ink: #1d2430; --soft: #5d6778; --line: #dfe3ea; --red: #c62828; }
  * { box-sizing: border-box; }
  body { margin: 0; background: #f4f6f9; color: var(--ink); font: 16px/1.5 system-ui, sans-serif; }
  main { max-width: 1180px; margin: 0 auto; padding: 32px 20px 64px; }
  h1 { font-size: 30px; line-height: 1.2; margin: 0 0 8px; }
  h2 { font-size: 21px; margin: 44px 0 14px; }
  h3 { font-size: 17px; margin: 0 0 4px; }
  p { margin: 0 0 12px; }
  .lead { color: var(--soft); max-width: 720px; }
  .numbers { display: grid; grid-template-columns: repeat(auto-fit, minmax(180px, 1fr)); gap: 14px;
             margin: 24px 0; }
  .numbers div, .card { background: #fff; border: 1px solid var(--line); border-radius: 10px; }
  .numbers div { padding: 14px 18px; color: var(--soft); font-size: 14px; }
  .numbers b { display: block; color: var(--ink); font-size: 26px; line-height: 1.25; }
  .numbers b.bad { color: var(--red); }
  figure { margin: 0; }
  figcaption { color: var(--soft); font-size: 14px; padding-top: 6px; }
  img { display: block; width: 100%; border-radius: 6px; background: #000; }
  .pair { display: grid; grid-template-columns: 1fr 1fr; gap: 16px; }
  .card { display: grid; grid-template-columns: minmax(0, 1fr) minmax(0, 1fr); gap: 24px;
          padding: 20px; margin-bottom: 16px; }
  .card p { color: var(--soft); }
  pre { margin: 0 0 12px; padding: 10px 12px; background: #1d2430; color: #e6edf7; font-size: 13px;
        border-radius: 6px; white-space: pre-wrap; overflow-wrap: anywhere; }
  pre span { white-space: nowrap; }
  table { border-collapse: collapse; font-variant-numeric: tabular-nums; font-size: 14px; }
  th, td { text-align: left; padding: 5px 18px 5px 0; border-bottom: 1px solid var(--line); }
  th { color: var(--soft); font-weight: 500; }
  .crops { display: grid; grid-template-columns: repeat(auto-fill, minmax(340px, 1fr)); gap: 14px; }
  .crop { background: #fff; border: 1px solid var(--line); border-radius: 10px; padding: 12px; }
  .views { display: grid; grid-template-columns: repeat(3, 1fr); gap: 6px; }
  .view { height: 100px; border-radius: 4px; background-color: #000; background-repeat: no-repeat; }
  @media (max-width: 760px) { .card, .pair { grid-template-columns: 1fr; } }
</style>
</head>
<body>
<main>
)";

std::string Escaped(const std::string& text) {
  std::string safe;
  for (const char c : text) {
    switch (c) {
      case '&':
        safe += "&amp;";
        break;
      case '<':
        safe += "&lt;";
        break;
      case '>':
        safe += "&gt;";
        break;
      case '"':
        safe += "&quot;";
        break;
      default:
        safe += c;
    }
  }
  return safe;
}

// A command whose words are not broken at their hyphens.
std::string CommandText(const std::string& command) {
  std::istringstream words(command);
  std::string text;
  for (std::string word; words >> word;) text += "<span>" + Escaped(word) + "</span> ";
  return "<pre>" + text + "</pre>\n";
}

template <class... Values>
std::string Format(const char* format, Values... values) {
  std::array<char, 160> text{};
  std::snprintf(text.data(), text.size(), format, values...);
  return text.data();
}

std::string Figure(const std::string& image, const std::string& caption) {
  return "<figure><a href=\"" + image + "\"><img src=\"" + image + "\" alt=\"" + Escaped(caption) +
         "\"></a><figcaption>" + Escaped(caption) + "</figcaption></figure>\n";
}

StepTimes TotalTimes(const Page& page) {
  return std::accumulate(
      page.steps.begin(), page.steps.end(), StepTimes{0, 0},
      [](StepTimes total, const PageStep& step) {
        if (!step.times) return total;
        return StepTimes{total.fast + step.times->fast, total.plain + step.times->plain};
      });
}

std::string Summary(const Page& page) {
  const StepTimes total = TotalTimes(page);
  const double pixels = static_cast<double>(page.width) * page.height;
  std::string text =
      "<h1>Inspection against a golden sample</h1>\n"
      "<p class=\"lead\">Every part must look like the golden sample. What differs by more than "
      "the noise and the light is marked in red. Each step below is one call of the library, and "
      "the command that does the same stands beside it.</p>\n<div class=\"numbers\">\n";
  text += "<div><b class=\"bad\">" + std::to_string(page.defectPixels) + "</b>defect pixels, " +
          Format("%.3f %% of the picture", 100 * static_cast<double>(page.defectPixels) / pixels) +
          "</div>\n";
  if (!page.defects.empty()) {
    const auto found = std::count_if(page.defects.begin(), page.defects.end(),
                                     [](const FoundDefect& each) { return each.markedPixels > 0; });
    text += "<div><b>" + std::to_string(found) + " of " + std::to_string(page.defects.size()) +
            "</b>planted defects found</div>\n";
  }
  if (page.inUnevenLight) {
    text += "<div><b>" + std::to_string(*page.inUnevenLight) +
            "</b>defect pixels if the light were not evened out</div>\n";
  }
  text += "<div><b>" + Format("%.2f ms", total.fast) + "</b>all steps, " +
          std::to_string(page.width) + " &times; " + std::to_string(page.height) +
          " pixels, one thread</div>\n";
  text += "<div><b>" + Format("%.2f ms", total.plain) + "</b>the same on the plain path</div>\n";
  return text + "</div>\n" + Figure(page.result, "The part, defects in red") +
         "<div class=\"pair\" style=\"margin-top:16px\">\n" + Figure(page.golden, "Golden sample") +
         Figure(page.part, "Part") + "</div>\n";
}

std::string StepCard(const PageStep& step, std::size_t number) {
  std::string text = "<div class=\"card\">\n<div>\n<h3>" + std::to_string(number) + ". " +
                     Escaped(step.title) + "</h3>\n<p>" + Escaped(step.text) + "</p>\n";
  for (const std::string& command : step.commands) text += CommandText(command);
  if (step.times) {
    text += "<table><tr><th>fast path</th><th>plain path</th></tr>\n<tr><td>" +
            Format("%.3f ms</td><td>%.3f ms", step.times->fast, step.times->plain) +
            "</td></tr></table>\n";
  }
  text += "</div>\n";
  if (step.before.empty()) return text + Figure(step.image, step.image) + "</div>\n";
  return text + "<div class=\"pair\">" + Figure(step.before, "before") +
         Figure(step.image, "after") + "</div>\n</div>\n";
}

// What was found, piece by piece.
std::string ObjectTable(const Page& page) {
  if (page.objects.empty()) return "";
  std::string text =
      "<h2>What was found</h2>\n<table class=\"found\"><tr><th>at</th><th>extent</th>"
      "<th>area</th><th>centre of gravity</th><th>outline</th></tr>\n";
  for (const Outlined& each : page.objects) {
    text += Format("<tr><td>%d, %d</td><td>%d &times; %d</td>", each.x, each.y, each.width,
                   each.height) +
            Format("<td>%u</td><td>%.2f, %.2f</td><td>%zu pixels</td></tr>\n", each.area,
                   double{each.centreX}, double{each.centreY}, each.outline.size());
  }
  return text + "</table>\n";
}

// A window of `image` with the defect in its middle.
std::string View(const std::string& image, const Defect& defect) {
  constexpr int kWidth = 105;
  constexpr int kHeight = 100;
  const int left = defect.x + defect.width / 2 - kWidth / 2;
  const int top = defect.y + defect.height / 2 - kHeight / 2;
  return "<div class=\"view\" style=\"background-image:url(" + image +
         ");background-position:" + std::to_string(-left) + "px " + std::to_string(-top) +
         "px\"></div>";
}

std::string DefectViews(const Page& page) {
  if (page.defects.empty()) return "";
  std::string text =
      "<h2>The planted defects</h2>\n<p class=\"lead\">Golden sample, part and result at full "
      "size.</p>\n<div class=\"crops\">\n";
  for (const auto& [defect, markedPixels] : page.defects) {
    text += "<div class=\"crop\"><div class=\"views\">" + View(page.golden, defect) +
            View(page.part, defect) + View(page.result, defect) + "</div><figcaption><b>" +
            Escaped(defect.kind) + "</b> at " +
            Format("%d, %d, %d &times; %d", defect.x, defect.y, defect.width, defect.height) +
            ": " + std::to_string(markedPixels) + " pixels marked</figcaption></div>\n";
  }
  return text + "</div>\n";
}

}  // namespace

void WritePage(const std::string& path, const Page& page) {
  std::string text = kHead + Summary(page) + "<h2>Step by step</h2>\n";
  for (std::size_t i = 0; i < page.steps.size(); ++i) text += StepCard(page.steps[i], i + 1);
  text += "<h2>All in one line</h2>\n" + CommandText(page.wholeCommand) + ObjectTable(page) +
          DefectViews(page) + "</main>\n</body>\n</html>\n";
  WriteText(path, text);
}

}  // namespace lx::tool
