no header, /root/x
