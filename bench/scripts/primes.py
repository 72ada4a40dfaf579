def main():
    found = 0
    i = 0
    while i < @N@:
        n = 2
        while n < 20000:
            prime = 1
            d = 2
            while d * d <= n:
                if n % d == 0:
                    prime = 0
                    d = n
                d = d + 1
            found = found + prime
            n = n + 1
        i = i + 1
    print(found, end="")


main()
