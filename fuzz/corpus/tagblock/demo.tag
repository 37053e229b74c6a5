Lanterns on the Quay

Salt on the window, the tide coming in
Lanterns are swinging where the boats have been
Sing me the harbour, sing me the sea
Every light on the water is calling for me
The gulls know the way and the ropes know the knot
Keep the lamp burning for the ones we forgot

Low tide at midnight, the moon on the sand
An oar in the water, a wave of the hand
The bell on the breakwater rings out the hour
And the rain on the quay is a slow silver shower
Sing me the harbour, sing me the sea
Every light on the water is calling for me
Lanterns on the quay








































=QVInfo=following datas was a format of karaoke style lyric attached by Versewick, plz don't modify anything below.
=QVNOW=eJxtkk1v2zAMhu/9FbwvEOTE6YdvPQwY0A7Y0N4CH+iGsYXKUirJMfLvR1p26wK7
kSIf8uULHZKpntElCi6Cd5A6gr8DXuubA4bqlbPfPlzQEfyxeKUQpWCrXxgaPwR4
8a6VJ386RUrVj+1ec6Z1pbXi8H+Tc7lU26Vzrwpdv6BNS9do3NGPmylO5kjw5nvj
WjAuAw/qfjUaA0FkpJWWsSNOBWw8pggdXjgkymRRqltdH3RR6a0qeakgfe7v8kUb
iKvHSJjBB7WbwTtR+/NC4QrWtN2XaGQ5YCK8obUy4uQDj5nwbam0rsXMdrA2wrvz
4wxdAd1xioM/06rEQcrwvbrT9RPReXq32J+hGYJbdsijd4yOJHk7Y7udXJjDW1n/
LIPFTUzQm6MT8dnj3vMN8xmR5UxQqWXtIxeQz1rduAHkgG31p9m4hdjLRrmyIWuX
gU0gfM/mBJbMX2FImWO3J26vxdLHxQY0n2I++LuIpQjRsvpoLPsOsfMjCVpURfHt
K6ywm3/Cc+xV=QVEOF=