#!/usr/bin/osascript
local t = {3, 1, 2, key = "value"}
table.sort(t, function(a, b) return a > b end)
for k, v in pairs(t) do t[k] = tostring(v):gsub("(%w+)", "<%1>") end
local r = dozely.take({1, "two", {three = 3.5}}, nil, true)
return ("%s|%5.2f"):format(table.concat(t, ","), #r) .. load("return 1 + 1")()
