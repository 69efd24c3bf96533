-- For wrk (Debian): sends the label again and again on connections that stay, as
--   wrk -t1 -c4 -d10s -s bench/render.lua http://127.0.0.1:9180/render
local file = assert(io.open("examples/shipping-label.zpl", "rb"))
wrk.method = "POST"
wrk.body = file:read("*a")
wrk.headers["Content-Type"] = "application/octet-stream"
file:close()
