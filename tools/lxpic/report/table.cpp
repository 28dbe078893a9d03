// SPDX-License-Identifier: Apache-2.0
#include "tools/lxpic/report/table.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <limits>

#include "tools/lxpic/common/words.h"

namespace lx::tool {

namespace {

using Cells = std::vector<std::string>;
constexpr const char* kFile = "file";

// A number that came from single precision has the digits of that only.
std::string ExactText(double value) {
  if (value == std::floor(value) || !(std::abs(value) < std::numeric_limits<float>::max()) ||
      static_cast<float>(value) != value) {
    return NumberText(value);
  }
  std::array<char, 32> text{};
  const auto [end, error] =
      std::to_chars(text.data(), text.data() + text.size(), static_cast<float>(value));
  return {text.data(), end};
}

std::string ShortText(double value) {
  if (value == std::floor(value) || !std::isfinite(value)) return NumberText(value);
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%.6g", value);
  return text.data();
}

std::string ElementText(const Numbers& numbers, std::size_t element) {
  Cells fields;
  for (std::size_t field = 0; field < numbers.fields.size(); ++field) {
    fields.push_back(ShortText(numbers.At(element, field)));
  }
  return Join(fields, ",");
}

// A long vector as its first and last elements.
std::string ShortText(const Numbers& numbers) {
  if (!numbers.isVector) return ElementText(numbers, 0);
  constexpr std::size_t kWhole = 10;
  constexpr std::size_t kShown = 4;
  const std::size_t count = numbers.Count();
  Cells elements;
  for (std::size_t i = 0; i < count; ++i) {
    const bool isShown = count <= kWhole || i < kShown || i + kShown >= count;
    if (isShown) elements.push_back(ElementText(numbers, i));
    if (!isShown && i == kShown) elements.emplace_back("...");
  }
  const std::string text = Join(elements, numbers.fields.size() == 1 ? "," : " ");
  return count <= kWhole ? text : text + " (" + std::to_string(count) + ")";
}

// All names, in the order in which they first come.
Cells NamesOf(const std::vector<TableRow>& rows) {
  Cells names;
  for (const TableRow& row : rows) {
    for (const NamedNumbers& each : row.numbers) AddOnce(names, each.name);
  }
  return names;
}

const Numbers* Find(const TableRow& row, const std::string& name) {
  const auto found = std::find_if(row.numbers.begin(), row.numbers.end(),
                                  [&](const NamedNumbers& each) { return each.name == name; });
  return found == row.numbers.end() ? nullptr : &found->numbers;
}

std::string Aligned(const std::vector<Cells>& lines) {
  std::vector<std::size_t> widths(lines.front().size());
  for (const Cells& line : lines) {
    for (std::size_t i = 0; i < line.size(); ++i) widths[i] = std::max(widths[i], line[i].size());
  }
  std::string text;
  for (const Cells& line : lines) {
    std::string whole;
    for (std::size_t i = 0; i < line.size(); ++i) {
      whole += line[i] + std::string(widths[i] - line[i].size() + 2, ' ');
    }
    text += whole.substr(0, whole.find_last_not_of(' ') + 1) + "\n";
  }
  return text;
}

std::string PlainText(const std::vector<TableRow>& rows) {
  std::string text;
  if (rows.size() == 1) {
    for (const auto& [name, numbers] : rows[0].numbers)
      text += name + " " + ShortText(numbers) + "\n";
    return text;
  }
  const Cells names = NamesOf(rows);
  std::vector<Cells> lines = {{kFile}};
  lines[0].insert(lines[0].end(), names.begin(), names.end());
  for (const TableRow& row : rows) {
    lines.push_back({row.file});
    for (const std::string& name : names) {
      const Numbers* const numbers = Find(row, name);
      lines.back().push_back(numbers == nullptr ? "" : ShortText(*numbers));
    }
  }
  return Aligned(lines);
}

std::string QuotedForCsv(const std::string& text) {
  if (text.find_first_of(",\"\r\n") == std::string::npos) return text;
  std::string quoted = "\"";
  for (const char c : text) quoted += c == '"' ? "\"\"" : std::string(1, c);
  return quoted + "\"";
}

struct Column {
  std::string name;
  std::string field;

  std::string Title() const { return field.empty() ? name : name + "." + field; }
};

std::vector<Column> ColumnsOf(const std::vector<TableRow>& rows) {
  std::vector<Column> columns;
  for (const std::string& name : NamesOf(rows)) {
    const auto row = std::find_if(rows.begin(), rows.end(), [&](const TableRow& each) {
      return Find(each, name) != nullptr;
    });
    for (const std::string& field : Find(*row, name)->fields) columns.push_back({name, field});
  }
  return columns;
}

// Empty where there is no such element.
std::string CellOf(const TableRow& row, const Column& column, std::size_t element) {
  const Numbers* const numbers = Find(row, column.name);
  if (numbers == nullptr) return "";
  const auto& fields = numbers->fields;
  const auto field = std::find(fields.begin(), fields.end(), column.field);
  if (!numbers->isVector) element = 0;
  if (field == fields.end() || element >= numbers->Count()) return "";
  return ExactText(numbers->At(element, static_cast<std::size_t>(field - fields.begin())));
}

bool AnyVector(const std::vector<TableRow>& rows) {
  return std::any_of(rows.begin(), rows.end(), [](const TableRow& row) {
    return std::any_of(row.numbers.begin(), row.numbers.end(),
                       [](const NamedNumbers& each) { return each.numbers.isVector; });
  });
}

// One for a row without vectors.
std::size_t LineCount(const TableRow& row) {
  std::size_t count = 1;
  for (const auto& [name, numbers] : row.numbers) {
    if (numbers.isVector) count = std::max(count, numbers.Count());
  }
  return count;
}

std::string CsvText(const std::vector<TableRow>& rows) {
  const bool hasFiles = !rows.front().file.empty();
  const bool hasVectors = AnyVector(rows);
  const auto columns = ColumnsOf(rows);
  const auto line = [&](const std::string& file, const std::string& index, const auto& cellOf) {
    Cells cells;
    if (hasFiles) cells.push_back(QuotedForCsv(file));
    if (hasVectors) cells.push_back(index);
    for (const Column& column : columns) cells.push_back(QuotedForCsv(cellOf(column)));
    // Not Join, which leaves out the separator before an empty first cell.
    std::string text;
    for (std::size_t i = 0; i < cells.size(); ++i) text += (i == 0 ? "" : ",") + cells[i];
    return text + "\n";
  };
  std::string text = line(kFile, "index", [](const Column& column) { return column.Title(); });
  for (const TableRow& row : rows) {
    for (std::size_t i = 0; i < LineCount(row); ++i) {
      text += line(row.file, std::to_string(i),
                   [&](const Column& column) { return CellOf(row, column, i); });
    }
  }
  return text;
}

std::string QuotedForJson(const std::string& text) {
  std::string quoted = "\"";
  for (const char c : text) {
    std::array<char, 8> escape{};
    if (static_cast<unsigned char>(c) < 0x20) {
      std::snprintf(escape.data(), escape.size(), "\\u%04x", static_cast<unsigned>(c));
      quoted += escape.data();
    } else {
      if (c == '"' || c == '\\') quoted += '\\';
      quoted += c;
    }
  }
  return quoted + "\"";
}

std::string Enclosed(const char* open, const std::string& text, const char* close) {
  return std::string(open).append(text).append(close);
}

std::string JsonElement(const Numbers& numbers, std::size_t element) {
  Cells fields;
  for (std::size_t field = 0; field < numbers.fields.size(); ++field) {
    const double value = numbers.At(element, field);
    // There is no other word for it.
    const std::string text = std::isfinite(value) ? ExactText(value) : "null";
    const std::string& name = numbers.fields[field];
    fields.push_back(name.empty() ? text : QuotedForJson(name) + ": " + text);
  }
  const std::string text = Join(fields, ", ");
  return numbers.fields.front().empty() ? text : Enclosed("{", text, "}");
}

std::string JsonValue(const Numbers& numbers) {
  if (!numbers.isVector) return JsonElement(numbers, 0);
  Cells elements;
  for (std::size_t i = 0; i < numbers.Count(); ++i) elements.push_back(JsonElement(numbers, i));
  return Enclosed("[", Join(elements, ", "), "]");
}

std::string JsonText(const std::vector<TableRow>& rows) {
  Cells objects;
  for (const TableRow& row : rows) {
    Cells members;
    if (!row.file.empty()) members.push_back("\"file\": " + QuotedForJson(row.file));
    for (const auto& [name, numbers] : row.numbers) {
      members.push_back(QuotedForJson(name) + ": " + JsonValue(numbers));
    }
    objects.push_back(Enclosed("  {", Join(members, ", "), "}"));
  }
  return Enclosed("[\n", Join(objects, ",\n"), "\n]\n");
}

}  // namespace

std::vector<TableRow> RowsOf(const std::string& file, const Numbers& records) {
  std::vector<TableRow> rows;
  for (std::size_t i = 0; i < records.Count(); ++i) {
    TableRow row{file, {}};
    for (std::size_t field = 0; field < records.fields.size(); ++field) {
      row.numbers.push_back(
          {records.fields[field], {false, Numbers::Drawing::kNone, {""}, {records.At(i, field)}}});
    }
    rows.push_back(std::move(row));
  }
  return rows;
}

std::string TableText(const std::vector<TableRow>& rows, TableFormat format) {
  if (NamesOf(rows).empty()) return "";
  switch (format) {
    case TableFormat::kCsv:
      return CsvText(rows);
    case TableFormat::kJson:
      return JsonText(rows);
    case TableFormat::kText:
      break;
  }
  return PlainText(rows);
}

}  // namespace lx::tool
