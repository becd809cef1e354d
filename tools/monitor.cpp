#include "monitor.h"
#include "failure.h"
#include "stop.h"

#include <algorithm>
#include <cstdio>
#include <memory>

#include <ncurses.h>
#include <unistd.h>

namespace zavra::tools
{

namespace
{

constexpr int key_escape = 27;

/// The terminal in ncurses' hands. Standard output may lead elsewhere, so that it is opened by name.
class Screen
{
public:
    Screen() : terminal_(std::fopen("/dev/tty", "r+"))
    {
        if (!terminal_)
            throw Failure("monitor: there is no terminal to draw on");
        screen_ = newterm(nullptr, terminal_.get(), terminal_.get());
        if (screen_ == nullptr)
            throw Failure("monitor: this terminal cannot be drawn on; is TERM set?");
        cbreak();
        noecho();
        nodelay(stdscr, TRUE);
        keypad(stdscr, TRUE);
        curs_set(0);
    }
    ~Screen()
    {
        endwin();
        delscreen(screen_);
    }
    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;

private:
    struct Close
    {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };
    std::unique_ptr<std::FILE, Close> terminal_;
    SCREEN* screen_;
};

void print(int row, int column, int width, const std::string& text, attr_t attributes)
{
    attrset(attributes);
    mvaddnstr(row, column, text.c_str(), width);
    attrset(A_NORMAL);
}

void draw_line(int row, const Monitor_Column& column, const Monitor_Line& line)
{
    const int space = COLS - column.left;
    switch (line.kind) {
    case Monitor_Line::Kind::title:
        print(row, column.left, space, line.name + (line.value.empty() ? "" : ": " + line.value),
              A_BOLD | (line.value.empty() ? A_UNDERLINE : A_STANDOUT));
        break;
    case Monitor_Line::Kind::problem:
        print(row, column.left, space, line.name, A_BOLD);
        break;
    case Monitor_Line::Kind::value:
        print(row, column.left, space, line.name, line.old ? A_DIM : A_NORMAL);
        if (const int left = column.name_width + 1; left < space)
            print(row, column.left + left, space - left, line.value,
                  line.old       ? A_DIM
                  : line.changed ? A_STANDOUT
                                 : A_NORMAL);
    }
}

/// Lines flow from column to column, `first` being the line at the upper left.
void draw(const std::vector<Monitor_Line>& lines, std::size_t first)
{
    erase();
    for (const Monitor_Column& column : arrange(lines, first, std::max(1, LINES - 1), COLS))
        for (std::size_t i = column.first; i < column.last; ++i)
            draw_line(static_cast<int>(i - column.first), column, lines[i]);
    print(LINES - 1, 0, COLS, "q quit, arrows and page keys scroll; what changed is highlighted", A_DIM);
    refresh();
}

std::size_t scrolled(std::size_t first, int key, std::size_t size)
{
    const auto page = static_cast<std::size_t>(std::max(1, LINES - 1));
    switch (key) {
    case KEY_DOWN:
        return std::min(first + 1, size - 1);
    case KEY_NPAGE:
        return std::min(first + page, size - 1);
    case KEY_UP:
        return first - std::min<std::size_t>(first, 1);
    case KEY_PPAGE:
        return first - std::min(first, page);
    case KEY_HOME:
        return 0;
    default:
        return first;
    }
}

}

void run_monitor(ZAVRA_100& device, Monitor_Model& model, std::chrono::nanoseconds interval, unsigned int count)
{
    using namespace std::chrono_literals;
    constexpr auto key_interval = 50ms;
    Screen screen;
    Rhythm rhythm(interval, Steady::now());
    std::size_t first = 0;
    for (unsigned int reading = 1;; ++reading) {
        model.read(device);
        draw(model.lines(), first);
        if (reading == count)
            return;
        const auto next = rhythm.next(Steady::now());
        do {
            for (int key = getch(); key != ERR; key = getch()) {
                if (key == 'q' || key == key_escape)
                    return;
                first = scrolled(first, key, model.lines().size());
                draw(model.lines(), first);
            }
            if (!wait_until(std::min(next, Steady::now() + key_interval)))
                return;
        } while (Steady::now() < next);
    }
}

}
