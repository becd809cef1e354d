#pragma once

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace zavra::simulator
{

/// The rows of a file in tests/data that hold numbers, without the words between them; a blank or a comma separates.
inline std::vector<std::vector<double>> number_table(const std::string& file)
{
    std::ifstream stream(std::string(ZAVRA_TEST_DATA_DIR) + "/" + file);
    std::vector<std::vector<double>> rows;
    for (std::string line; std::getline(stream, line);) {
        for (char& c : line)
            c = c == ',' ? ' ' : c;
        std::vector<double> row;
        std::istringstream words(line);
        for (std::string word; words >> word;) {
            char* end = nullptr;
            const double number = std::strtod(word.c_str(), &end);
            if (*end == '\0')
                row.push_back(number);
        }
        if (!row.empty())
            rows.push_back(row);
    }
    return rows;
}

}
