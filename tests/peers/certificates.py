"""Certificates for tests, made by openssl in a folder of the caller's: an authority, and certificates that are good or bad."""
import ssl
import subprocess


def openssl(folder, *arguments):
    subprocess.run(['openssl', *arguments], cwd=folder, check=True, capture_output=True, timeout=30)


def make_authority(folder, name):
    openssl(folder, 'req', '-x509', '-newkey', 'rsa:2048', '-nodes', '-keyout', f'{name}.key', '-out', f'{name}.pem',
            '-days', '30', '-subj', f'/CN=Test authority {name}', '-addext', 'basicConstraints=critical,CA:TRUE',
            '-addext', 'keyUsage=critical,keyCertSign,cRLSign')


def make_certificate(folder, name, subject, authority, extensions, days=10):
    """All have the key server.key. `authority` None signs with that key itself. A negative number of days has passed already."""
    (folder / f'{name}.ext').write_text(f'{extensions}\n')
    if not (folder / 'server.key').exists():
        openssl(folder, 'genrsa', '-out', 'server.key', '2048')
    openssl(folder, 'req', '-new', '-key', 'server.key', '-out', f'{name}.csr', '-subj', f'/CN={subject}')
    signer = ['-CA', f'{authority}.pem', '-CAkey', f'{authority}.key', '-CAcreateserial'] if authority else ['-key', 'server.key']
    openssl(folder, 'x509', '-req', '-in', f'{name}.csr', '-days', str(days), '-extfile', f'{name}.ext', '-out', f'{name}.pem', *signer)


def make_server(folder, name, authority, host='localhost', days=10):
    make_certificate(folder, name, host, authority, f'subjectAltName=DNS:{host}\nextendedKeyUsage=serverAuth', days)


def server_context(folder, name):
    context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
    context.load_cert_chain(folder / f'{name}.pem', folder / 'server.key')
    return context


def make_all(folder):
    """The servers' names with their TLS contexts; the authority to trust is folder/ca.pem."""
    make_authority(folder, 'ca')
    make_authority(folder, 'unknown_ca')
    make_server(folder, 'good', 'ca')
    make_server(folder, 'expired', 'ca', days=-1)
    make_server(folder, 'wrong_name', 'ca', host='elsewhere.example')
    make_server(folder, 'unknown', 'unknown_ca')
    make_server(folder, 'self_signed', None)
    return {name: server_context(folder, name) for name in ('good', 'expired', 'wrong_name', 'unknown', 'self_signed')}
