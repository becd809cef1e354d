# Puts a page together and makes a C++ string of it: cmake -DPAGE=page.html -DDIRECTORIES=a|b -DNAME=variable -DOUTPUT=page.cpp
# A line "@embed FILE@" of the page stands for a file of one of the directories.
string(REPLACE "|" ";" directories "${DIRECTORIES}")
file(READ ${PAGE} text)
while(text MATCHES "@embed ([^@]+)@") # a file may have such lines as well
  set(mark "${CMAKE_MATCH_0}")
  unset(file CACHE)
  find_file(file ${CMAKE_MATCH_1} PATHS ${directories} REQUIRED NO_DEFAULT_PATH)
  file(READ ${file} part)
  string(REGEX REPLACE "\n//# sourceMappingURL=[^\n]*" "" part "${part}") # there is no such file
  string(REPLACE "${mark}" "${part}" text "${text}")
endwhile()
file(WRITE ${OUTPUT} "#include <string_view>

namespace zavra::simulator
{

extern const std::string_view ${NAME};
const std::string_view ${NAME} = R\"~page~(${text})~page~\";

}
")
