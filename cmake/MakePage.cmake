# Turns one page of docs/ into HTML. SOURCE, PAGE, LANGUAGE, and CMARK: the program that converts Markdown.
execute_process(COMMAND ${CMARK} --extension table --extension autolink ${SOURCE}
  OUTPUT_VARIABLE body RESULT_VARIABLE failed)
if(failed)
  message(FATAL_ERROR "${SOURCE} could not be turned into HTML.")
endif()

# Pages name each other by their sources. What is not among the pages is only named, not linked.
string(REGEX REPLACE "href=\"([a-z-]+)\\.md([\"#])" "href=\"\\1.html\\2" body "${body}")
if(NOT LANGUAGE STREQUAL "en") # whose pages are one folder up among the sources
  string(REGEX REPLACE "href=\"\\.\\./([a-z-]+)\\.md([\"#])" "href=\"./../en/\\1.html\\2" body "${body}")
endif()
string(REGEX REPLACE "<a href=\"(\\.\\./en/)?\\.\\./[^\"]*\">(<code>[^<]*</code>|[^<]*)</a>" "\\2" body "${body}")
# Headings get the names by which pages refer to them.
string(REGEX MATCHALL "<h[2-4]>[^\n]*</h[2-4]>" headings "${body}")
foreach(heading IN LISTS headings)
  string(REGEX REPLACE "<[^>]*>" "" name "${heading}")
  string(TOLOWER "${name}" name)
  string(REGEX REPLACE "[^a-z0-9 -]" "" name "${name}")
  string(REPLACE " " "-" name "${name}")
  string(REGEX REPLACE "^<h([2-4])>" "<h\\1 id=\"${name}\">" named "${heading}")
  string(REPLACE "${heading}" "${named}" body "${body}")
endforeach()

string(REGEX MATCH "<h1>[^<]*" title "${body}")
string(REPLACE "<h1>" "" title "${title}")

file(WRITE ${PAGE} "<!DOCTYPE html>
<html lang=\"${LANGUAGE}\">
<head>
<meta charset=\"utf-8\">
<meta name=\"viewport\" content=\"width=device-width\">
<title>${title}</title>
<style>
:root { color-scheme: light dark; }
body { max-width: 52rem; margin: 2rem auto; padding: 0 1rem; font: 1rem/1.5 sans-serif; }
img { max-width: 100%; }
table { border-collapse: collapse; }
th, td { border: 1px solid gray; padding: 0.3rem 0.6rem; text-align: left; vertical-align: top; }
pre { overflow-x: auto; padding: 0.6rem; border: 1px solid gray; }
</style>
</head>
<body>
${body}</body>
</html>
")
