for a, b in ("k1=v1, k2=v2"):gmatch("(%w+)=(%w*)") do dozely.take(a, b) end
return ("THE (quick) fox"):find("%f[%a]%b()()"), ("x"):rep(9):match("^(x-)(x+)%1?$"), ("[a]"):gsub("[]%[^-z]", {a = 1})
